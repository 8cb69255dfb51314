# Flags that every target of the project gets, by linking the interface target wirefall_flags, and
# the helpers that make libraries and programs in the project's way.

add_library(wirefall_flags INTERFACE)
target_compile_features(wirefall_flags INTERFACE cxx_std_20)
set(CMAKE_CXX_EXTENSIONS OFF)

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(
    wirefall_flags
    INTERFACE -Wall
              -Wextra
              -Wpedantic
              -Wconversion
              -Wsign-conversion
              -Wshadow
              -Wdouble-promotion
              -Wformat=2
              -Wimplicit-fallthrough
              -Wnon-virtual-dtor
              -Wold-style-cast
              -Wcast-align
              -Wnull-dereference
              -Woverloaded-virtual
              -Wundef
              -Wunused
              -Werror
              # The rules of the game and its layouts count on single-precision arithmetic in the
              # order written: no fused multiply-add, whatever the processor offers.
              -ffp-contract=off)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(wirefall_flags INTERFACE -Wduplicated-cond -Wduplicated-branches
                                                    -Wlogical-op -Wuseless-cast)
    if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
      # GCC 12 sees overlapping copies in the concatenation of strings where there are none
      # (GCC bug 105651).
      target_compile_options(wirefall_flags INTERFACE -Wno-restrict)
    endif()
  endif()
elseif(MSVC)
  target_compile_options(wirefall_flags INTERFACE /W4 /WX /permissive- /utf-8 /fp:precise)
endif()

if(WIREFALL_SANITIZERS)
  target_compile_options(
    wirefall_flags INTERFACE -fsanitize=${WIREFALL_SANITIZERS} -fno-omit-frame-pointer
                             -fno-sanitize-recover=all)
  target_link_options(wirefall_flags INTERFACE -fsanitize=${WIREFALL_SANITIZERS})
endif()

if(WIREFALL_COVERAGE)
  target_compile_options(wirefall_flags INTERFACE --coverage)
  target_link_options(wirefall_flags INTERFACE --coverage)
endif()

# wirefall_library(<name> [SOURCES <file>...] [EXCEPT <file>...] [LINKS <target>...])
#
# A static library of one folder of src/: of all its sources, unless they are named, but for the
# excepted ones. LINKS are the folders below it: what a folder does not link it must not use.
function(wirefall_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;EXCEPT;LINKS")
  if(NOT arg_SOURCES)
    file(
      GLOB arg_SOURCES
      RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}"
      CONFIGURE_DEPENDS *.cpp)
    list(REMOVE_ITEM arg_SOURCES ${arg_EXCEPT})
  endif()
  add_library(${name} STATIC ${arg_SOURCES})
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(
    ${name}
    PUBLIC ${arg_LINKS}
    PRIVATE wirefall_flags)
endfunction()
