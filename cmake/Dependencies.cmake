# Third-party libraries. All come from the system or from a prefix that the caller names with
# CMAKE_PREFIX_PATH; nothing is downloaded here (docs/building.md).

find_package(SDL3 3.2 REQUIRED CONFIG)
find_package(SDL3_mixer 3.2 REQUIRED CONFIG)
# SDL's package asks that its headers be taken for the project's own; they do not pass its warnings.
set_property(TARGET SDL3::Headers PROPERTY SYSTEM ON)
if(WIREFALL_BUILD_TESTS)
  find_package(GTest REQUIRED)
  find_package(PNG REQUIRED)
endif()
if(WIREFALL_BUILD_BENCHMARKS)
  find_package(benchmark REQUIRED)
endif()

# SDL exports its headers as ordinary ones; here they are the system's, whose inline functions and
# macros need not pass our warnings.
foreach(target IN ITEMS SDL3::Headers SDL3_mixer::Headers)
  if(TARGET ${target})
    set_target_properties(${target} PROPERTIES SYSTEM ON)
  endif()
endforeach()
