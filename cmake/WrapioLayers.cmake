# Warnings and sanitizers that every target of the project gets.
add_library(wrapio_options INTERFACE)
target_compile_options(wrapio_options INTERFACE -Wall -Wextra -Wconversion -Wshadow -Wnon-virtual-dtor
                                                $<$<BOOL:${WRAPIO_WERROR}>:-Werror>)
target_compile_definitions(wrapio_options INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)

# wrapio_layer(NAME [FOLDER folder] SOURCES … PUBLIC libraries… PRIVATE libraries…)
#
# Adds the static library NAME whose headers are included as "Folder/Header.h". Each layer publishes an include root
# that holds nothing but its own folder, so a file can only include what its target links: an upward include does not
# compile.
function(wrapio_layer name)
  cmake_parse_arguments(LAYER "" "FOLDER" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  set(root ${CMAKE_BINARY_DIR}/include-roots/${name})
  cmake_path(GET LAYER_FOLDER PARENT_PATH parent)
  file(MAKE_DIRECTORY ${root}/${parent})
  if(NOT EXISTS ${root}/${LAYER_FOLDER})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${LAYER_FOLDER} ${root}/${LAYER_FOLDER} SYMBOLIC)
  endif()
  list(TRANSFORM LAYER_SOURCES PREPEND ${PROJECT_SOURCE_DIR}/src/${LAYER_FOLDER}/)
  add_library(${name} STATIC ${LAYER_SOURCES})
  target_include_directories(${name} PUBLIC ${root})
  target_link_libraries(${name} PUBLIC ${LAYER_PUBLIC} PRIVATE wrapio_options ${LAYER_PRIVATE})
endfunction()
