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
  if(LAYER_PUBLIC OR LAYER_PRIVATE)
    wrapio_precompile(${name} layer)
  endif()
endfunction()

# wrapio_qml_module(NAME FOLDER folder URI Uri SOURCES … QML … [SINGLETONS …] [IMPORTS …] PUBLIC … PRIVATE …)
#
# A layer that is a QML module too; called from the CMakeLists.txt of its own folder. Its QML files travel inside the
# program, where the engine looks for imports by itself. A program that uses the module calls the function that the
# layer declares for that: otherwise a linker leaves the registration of a static library out.
function(wrapio_qml_module name)
  cmake_parse_arguments(MODULE "" "FOLDER;URI" "SOURCES;QML;SINGLETONS;IMPORTS;PUBLIC;PRIVATE" ${ARGN})
  wrapio_layer(${name} FOLDER ${MODULE_FOLDER} SOURCES ${MODULE_SOURCES} PUBLIC ${MODULE_PUBLIC}
                                                                         PRIVATE ${MODULE_PRIVATE})
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  # Generated code includes the headers of types by their bare names.
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src/${MODULE_FOLDER})
  set_source_files_properties(${MODULE_SINGLETONS} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
  string(REPLACE "." "/" path ${MODULE_URI})
  # Compiled ahead of time where speed counts. For daily work that would take longer than it saves.
  if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    set(compiling NO_CACHEGEN)
  endif()
  qt_add_qml_module(${name}
    URI ${MODULE_URI}
    VERSION 1.0
    NO_PLUGIN
    ${compiling}
    RESOURCE_PREFIX /qt-project.org/imports
    OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/${path}
    IMPORT_PATH ${CMAKE_BINARY_DIR}/qml
    IMPORTS ${MODULE_IMPORTS}
    DEPENDENCIES QtQuick
    QML_FILES ${MODULE_SINGLETONS} ${MODULE_QML})
  # What Qt's generators write is not ours to keep free of warnings.
  get_target_property(sources ${name} SOURCES)
  list(FILTER sources INCLUDE REGEX "\\.rcc/|qmltyperegistrations")
  set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS "-w")
endfunction()
