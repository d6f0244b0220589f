# nrv718_test_headers(<name> LIBRARIES ... HEADERS ...): a target of nothing but headers, precompiled for the tests that reuse
# them. A test as the giver would be linked before any other is compiled.
function(nrv718_test_headers name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES;HEADERS")
  file(CONFIGURE OUTPUT ${name}.cpp CONTENT "int main() {}\n")
  add_executable(${name} EXCLUDE_FROM_ALL ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} nrv718_test_code)
  target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
endfunction()
