# nrv718_own_code: what every target of our own is built with; link it PRIVATE.
include(CheckCXXSourceCompiles)
# -O3 makes nothing faster that anyone would notice but the curves (src/response asks for it), and some files take three
# times as long to compile.
string(REPLACE "-O3" "-O2" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
# For the virtual rack, and found here so that every folder that links it knows it too.
find_package(Threads REQUIRED)

add_library(nrv718_own_code INTERFACE)
target_compile_options(nrv718_own_code INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor -Wold-style-cast
  -Woverloaded-virtual -Wextra-semi -Wundef -Werror
  # GCC 12 takes "text" + std::to_string(n) for an overlapping copy.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  # A tenth of the compiler's time went by in collecting garbage among 128 MB.
  "$<$<CXX_COMPILER_ID:GNU>:SHELL:--param ggc-min-heapsize=1000000 --param ggc-min-expand=100>")

# What every test is built with: it runs for moments, and its time goes by in the compiler.
add_library(nrv718_test_code INTERFACE)
target_link_libraries(nrv718_test_code INTERFACE nrv718_own_code)
target_compile_options(nrv718_test_code INTERFACE $<$<CONFIG:Release>:-O0>)
find_program(NRV718_GOLD ld.gold)
if(NRV718_GOLD AND NOT CMAKE_CROSSCOMPILING)
  # Programs of many tests are linked, each in a third of the time.
  target_link_options(nrv718_test_code INTERFACE -fuse-ld=gold)
endif()

if(NRV718_SANITIZERS)
  set(CMAKE_REQUIRED_FLAGS "-fsanitize=${NRV718_SANITIZERS}")
  check_cxx_source_compiles("int main() { return 0; }" NRV718_SANITIZERS_WORK)
  unset(CMAKE_REQUIRED_FLAGS)
  if(NOT NRV718_SANITIZERS_WORK)
    message(FATAL_ERROR "This compiler cannot build with -fsanitize=${NRV718_SANITIZERS}")
  endif()
  # Everywhere, not in our own targets alone: a program mixes sanitized and plain objects badly.
  add_compile_options(-fsanitize=${NRV718_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${NRV718_SANITIZERS})
  # False alarms in sanitized code.
  target_compile_options(nrv718_own_code INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()
