# Translations: lupdate gathers the texts of the sources, lrelease makes the catalogues that are built in.

find_package(Qt6 6.4 REQUIRED COMPONENTS LinguistTools)

# TextSource("Context", "Text") marks a text as QT_TRANSLATE_NOOP does.
set(ORVANE_LUPDATE_OPTIONS -silent -locations none -no-obsolete -tr-function-alias QT_TRANSLATE_NOOP+=TextSource)

# orvane_catalogues(target NAMES...): builds Resources/translations/<name>.ts into the target, as
# ":/translations/<name>.qm".
function(orvane_catalogues target)
  set(built)
  foreach(name ${ARGN})
    set(source "${CMAKE_SOURCE_DIR}/Resources/translations/${name}.ts")
    set(catalogue "${CMAKE_BINARY_DIR}/translations/${name}.qm")
    add_custom_command(OUTPUT "${catalogue}"
      COMMAND ${CMAKE_COMMAND} -E make_directory "${CMAKE_BINARY_DIR}/translations"
      COMMAND Qt6::lrelease -silent -nounfinished "${source}" -qm "${catalogue}"
      DEPENDS "${source}" VERBATIM)
    list(APPEND built "${catalogue}")
  endforeach()
  # Uncompressed, a catalogue is read where it lies in the program's file.
  qt_add_resources(${target} translations PREFIX "/translations" BASE "${CMAKE_BINARY_DIR}/translations"
    OPTIONS --no-compress FILES ${built})
endfunction()

# Every text of the sources, in translations/sources.ts of the build folder.
file(GLOB_RECURSE texts_of CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/Sources/*.cpp" "${CMAKE_SOURCE_DIR}/Sources/*.h")
set(ORVANE_SOURCE_TEXTS "${CMAKE_BINARY_DIR}/translations/sources.ts")
add_custom_command(OUTPUT "${ORVANE_SOURCE_TEXTS}"
  COMMAND ${CMAKE_COMMAND} -E make_directory "${CMAKE_BINARY_DIR}/translations"
  COMMAND ${CMAKE_COMMAND} -E rm -f "${ORVANE_SOURCE_TEXTS}"
  COMMAND Qt6::lupdate ${ORVANE_LUPDATE_OPTIONS} "${CMAKE_SOURCE_DIR}/Sources" -I "${CMAKE_SOURCE_DIR}/Sources"
    -source-language en_US -target-language en_US -ts "${ORVANE_SOURCE_TEXTS}"
  DEPENDS ${texts_of} VERBATIM)
add_custom_target(source_texts DEPENDS "${ORVANE_SOURCE_TEXTS}")

# Brings the catalogues of Resources/translations up to the sources: "ninja translations". The English one has only
# what is worded otherwise on this desktop.
set(catalogues "${CMAKE_SOURCE_DIR}/Resources/translations")
add_custom_target(translations
  COMMAND Qt6::lupdate ${ORVANE_LUPDATE_OPTIONS} "${CMAKE_SOURCE_DIR}/Sources" -I "${CMAKE_SOURCE_DIR}/Sources"
    -ts "${catalogues}/orvane_en_linux.ts" "${catalogues}/orvane_de.ts"
  COMMAND Qt6::lconvert -no-untranslated -i "${catalogues}/orvane_en_linux.ts" -o "${catalogues}/orvane_en_linux.ts"
  VERBATIM)
