# nrv718_text(<template> <file> [options of configure_file]): a text into the current binary folder, with the values of
# variables for @PROJECT_VERSION@ and its like.
function(nrv718_text template file)
  configure_file(${template} ${CMAKE_CURRENT_BINARY_DIR}/${file} @ONLY ${ARGN})
endfunction()

# nrv718_man_page(<template> <component>): installs a page of section 1; "<name>.1" or "<name>.1.in" is its template.
function(nrv718_man_page template component)
  string(REGEX REPLACE "\\.in$" "" page ${template})
  nrv718_text(${template} man/${page})
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/man/${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT ${component})
endfunction()
