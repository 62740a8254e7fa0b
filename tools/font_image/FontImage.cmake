# The GUI font image built into the program. make_font_image draws Dear ImGui's
# default font atlas (the recipe is in GuiFontAtlas.h) into a PNG file, and
# EmbedFile.cmake turns the file into a generated source of the engine.
# Included from the top-level CMakeLists.txt after the engine's target, so that
# the generated source belongs to it.
pkg_check_modules(IMGUI REQUIRED IMPORTED_TARGET imgui)

add_executable(make_font_image ${CMAKE_CURRENT_LIST_DIR}/make_font_image.cpp)
target_include_directories(make_font_image PRIVATE ${CMAKE_SOURCE_DIR}/src)
target_link_libraries(make_font_image PRIVATE PkgConfig::IMGUI)

set(VORN_FONT_IMAGE_PNG ${CMAKE_BINARY_DIR}/generated/GuiFontImage.png)
set(VORN_FONT_IMAGE_CPP ${CMAKE_BINARY_DIR}/generated/GuiFontImage.cpp)
add_custom_command(OUTPUT ${VORN_FONT_IMAGE_PNG}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/generated
  COMMAND $<TARGET_FILE:make_font_image> ${VORN_FONT_IMAGE_PNG}
  DEPENDS make_font_image
  COMMENT "Drawing the GUI font image")
add_custom_command(OUTPUT ${VORN_FONT_IMAGE_CPP}
  COMMAND ${CMAKE_COMMAND} -DINPUT=${VORN_FONT_IMAGE_PNG} -DOUTPUT=${VORN_FONT_IMAGE_CPP}
          -P ${CMAKE_CURRENT_LIST_DIR}/EmbedFile.cmake
  DEPENDS ${VORN_FONT_IMAGE_PNG} ${CMAKE_CURRENT_LIST_DIR}/EmbedFile.cmake
  COMMENT "Embedding the GUI font image")
target_sources(vorn_engine PRIVATE ${VORN_FONT_IMAGE_CPP})
