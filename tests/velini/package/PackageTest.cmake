# Builds and runs a program of somebody else's in every way that the library can be got: as the
# installed package by find_package and by pkg-config, from a folder that was moved after the
# installation, and as a part of the other's build by FetchContent, from a copy of the folder alone.
# Needs LIBRARY and CONSUMER, the two source folders, WORK, a folder to make, COMPILER, GENERATOR
# and SHARED, whether the library is a shared one.

function(run)
  execute_process(COMMAND ${ARGV} WORKING_DIRECTORY "${WORK}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# It is the package that is tried and not the compiler, so several files make one unit.
function(build source folder)
  run("${CMAKE_COMMAND}" -S "${source}" -B "${WORK}/${folder}" -G "${GENERATOR}"
      "-DCMAKE_CXX_COMPILER=${COMPILER}" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_UNITY_BUILD=ON
      "-DBUILD_SHARED_LIBS=${SHARED}"
      ${ARGN})
  run("${CMAKE_COMMAND}" --build "${WORK}/${folder}")
endfunction()

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")

# The folder, alone and under another name.
file(COPY "${LIBRARY}/" DESTINATION "${WORK}/sources")
build("${WORK}/sources" library)
run("${CMAKE_COMMAND}" --install "${WORK}/library" --prefix "${WORK}/installed")
file(RENAME "${WORK}/installed" "${WORK}/moved")

build("${CONSUMER}" found -DWAY=find_package "-DCMAKE_PREFIX_PATH=${WORK}/moved")
run("${WORK}/found/consumer")

build("${CONSUMER}" fetched -DWAY=FetchContent "-DFOLDER=${WORK}/sources")
run("${WORK}/fetched/consumer")

find_program(PKG_CONFIG NAMES pkg-config pkgconf REQUIRED)
file(GLOB_RECURSE package_file "${WORK}/moved/*/velini.pc")
cmake_path(GET package_file PARENT_PATH package_folder)
set(ENV{PKG_CONFIG_PATH} "${package_folder}")
execute_process(COMMAND "${PKG_CONFIG}" --cflags --libs velini OUTPUT_VARIABLE flags
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
foreach(flag IN LISTS flags)
  if(NOT flag MATCHES "^-[ILl]")
    message(FATAL_ERROR "The package imposes ${flag}")
  endif()
endforeach()
cmake_path(GET package_folder PARENT_PATH library_folder)
run("${COMPILER}" -std=c++20 "${CONSUMER}/Consumer.cpp" ${flags} "-Wl,-rpath,${library_folder}" -o
    "${WORK}/packaged")
run("${WORK}/packaged")
file(REMOVE_RECURSE "${WORK}")
