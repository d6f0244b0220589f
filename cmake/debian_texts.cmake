# Run by CPack before it packs what it has laid out in its folder: the texts of Debian packages are packed by themselves.
file(GLOB_RECURSE texts "${CPACK_TEMPORARY_DIRECTORY}/*.1" "${CPACK_TEMPORARY_DIRECTORY}/changelog")
list(FILTER texts INCLUDE REGEX "/usr/share/(man|doc)/") # the sources have such files elsewhere
if(texts)
  execute_process(COMMAND gzip -9n ${texts} COMMAND_ERROR_IS_FATAL ANY)
endif()
