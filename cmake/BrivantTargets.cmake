# What all targets of the project have in common.

# Compiler rules of every target: language level, hidden symbols, warnings, strict Qt.
function(brivant_compile_rules target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    target_compile_definitions(${target} PRIVATE
        QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY
        QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_STRICT_ITERATORS
        QT_USE_QSTRINGBUILDER QT_DISABLE_DEPRECATED_BEFORE=0x060400)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Wsuggest-override
        -Wzero-as-null-pointer-constant $<$<BOOL:${BRIVANT_WARNINGS_AS_ERRORS}>:-Werror>)
endfunction()

# A shared library Brivant::NAME, file libBrivantNAME.so, with its export header and install rules.
# Built beside the installed layout, so that it finds its resources by the same relative path in both.
function(brivant_add_library name)
    set(target Brivant${name})
    string(TOUPPER BRIVANT_${name} prefix)
    string(TOLOWER brivant${name}_export.h export_header)

    add_library(${target} SHARED)
    add_library(Brivant::${name} ALIAS ${target})
    brivant_compile_rules(${target})
    generate_export_header(${target} BASE_NAME ${prefix} EXPORT_FILE_NAME ${PROJECT_BINARY_DIR}/include/${export_header})
    set_target_properties(${target} PROPERTIES
        EXPORT_NAME ${name}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}
        INSTALL_RPATH $ORIGIN)
    if(UNIX AND NOT APPLE)
        target_link_options(${target} PRIVATE -Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/hidden-symbols.map)
        set_target_properties(${target} PROPERTIES LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/hidden-symbols.map)
    endif()
    target_include_directories(${target} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/BrivantPreference>)
    install(TARGETS ${target} EXPORT BrivantPreferenceTargets)
    install(FILES ${PROJECT_BINARY_DIR}/include/${export_header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/BrivantPreference)
endfunction()

# Adds the sources and the installed headers of the current folder to a library.
function(brivant_sources target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;SOURCES")
    target_sources(${target} PRIVATE ${arg_HEADERS} ${arg_SOURCES})
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>)
    install(FILES ${arg_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/BrivantPreference)
endfunction()
