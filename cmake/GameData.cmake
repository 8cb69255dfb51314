# What the game reads at run time, in data/. It lies beside the executable, in the build as where it
# is installed; the game runs without it too.
set(WIREFALL_DATA
    Localization/Languages.ini
    Localization/En.ini
    Localization/De.ini
    Music/MusicPatterns.ini
    Music/MenuCredits.ogg
    Music/Gameplay.ogg
    Music/Infection.ogg
    Music/Water.ogg
    Music/GameOver.ogg)

# wirefall_data_beside(<target> <folder>)
#
# Puts the executable into that folder, and the data with it.
function(wirefall_data_beside target folder)
  set(copies)
  foreach(file IN LISTS WIREFALL_DATA)
    add_custom_command(
      OUTPUT "${folder}/${file}"
      COMMAND "${CMAKE_COMMAND}" -E copy "${PROJECT_SOURCE_DIR}/data/${file}" "${folder}/${file}"
      DEPENDS "${PROJECT_SOURCE_DIR}/data/${file}")
    list(APPEND copies "${folder}/${file}")
  endforeach()
  add_custom_target(${target}_data DEPENDS ${copies})
  add_dependencies(${target} ${target}_data)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${folder}")
endfunction()

# wirefall_install_data(<folder>)
function(wirefall_install_data folder)
  foreach(file IN LISTS WIREFALL_DATA)
    cmake_path(GET file PARENT_PATH subfolder)
    install(FILES "${PROJECT_SOURCE_DIR}/data/${file}" DESTINATION "${folder}/${subfolder}")
  endforeach()
endfunction()
