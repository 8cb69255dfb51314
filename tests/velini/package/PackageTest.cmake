# Builds the library by itself, installs it, and builds and runs a program that finds it there.
# Needs LIBRARY and CONSUMER, the two source folders, WORK, a folder to make, COMPILER and GENERATOR.

function(run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE "${WORK}")
run("${CMAKE_COMMAND}" -S "${LIBRARY}" -B "${WORK}/library" -G "${GENERATOR}"
    "-DCMAKE_CXX_COMPILER=${COMPILER}"
    -DCMAKE_BUILD_TYPE=Release)
run("${CMAKE_COMMAND}" --build "${WORK}/library")
run("${CMAKE_COMMAND}" --install "${WORK}/library" --prefix "${WORK}/prefix")
run("${CMAKE_COMMAND}" -S "${CONSUMER}" -B "${WORK}/consumer" -G "${GENERATOR}"
    "-DCMAKE_CXX_COMPILER=${COMPILER}"
    "-DCMAKE_PREFIX_PATH=${WORK}/prefix")
run("${CMAKE_COMMAND}" --build "${WORK}/consumer")
execute_process(COMMAND "${WORK}/consumer/consumer" WORKING_DIRECTORY "${WORK}"
                COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE_RECURSE "${WORK}")
