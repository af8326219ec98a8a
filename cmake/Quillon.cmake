# Shared build settings for every Quillon target.

set(QUILLON_CAPTURES_DIR "${PROJECT_SOURCE_DIR}/captures")

function(quillon_settings target)
    target_compile_definitions(${target} PRIVATE
        QT_NO_CAST_FROM_ASCII
        QT_NO_CAST_TO_ASCII
        QT_USE_QSTRINGBUILDER
        QT_NO_URL_CAST_FROM_STRING
        QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
        QT_NO_KEYWORDS)
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
        target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wno-missing-field-initializers)
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            # GCC's flow analysis at -O2 reports std::optional members as maybe uninitialised
            # where they are not; its other warnings stay errors.
            target_compile_options(${target} PRIVATE -Wshadow=local -Wno-maybe-uninitialized)
        endif()
        if(QUILLON_WERROR)
            target_compile_options(${target} PRIVATE -Werror)
        endif()
    endif()
endfunction()

# quillon_library(name SOURCES ... LIBS ...): a static library of one subsystem.
function(quillon_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(${name} PUBLIC ${ARG_LIBS})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    quillon_settings(${name})
    add_dependencies(${name} quillon_layers)
endfunction()

# Checks the layers again whenever a source file changes, so that an include added since the
# last configure still stops the build.
function(quillon_layer_check_target)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS
        "${PROJECT_SOURCE_DIR}/src/*.h" "${PROJECT_SOURCE_DIR}/src/*.cpp" "${PROJECT_SOURCE_DIR}/src/*.mm")
    set(stamp "${PROJECT_BINARY_DIR}/quillon-layers.stamp")
    add_custom_command(OUTPUT "${stamp}"
        COMMAND "${CMAKE_COMMAND}" "-DQUILLON_SOURCE_DIR=${PROJECT_SOURCE_DIR}/src" "-DQUILLON_STAMP=${stamp}"
                -P "${PROJECT_SOURCE_DIR}/cmake/QuillonLayers.cmake"
        DEPENDS ${sources} "${PROJECT_SOURCE_DIR}/cmake/QuillonLayers.cmake"
        COMMENT "Checking that each layer includes only the layers below it"
        VERBATIM)
    add_custom_target(quillon_layers DEPENDS "${stamp}")
endfunction()

# quillon_test(name SOURCES ... LIBS ...): one Qt Test executable registered with CTest,
# run with the locale and time zone that the formatting rules are written for.
function(quillon_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_link_libraries(${name} PRIVATE Qt6::Test ${ARG_LIBS})
    target_compile_definitions(${name} PRIVATE
        QUILLON_CAPTURES_DIR="${QUILLON_CAPTURES_DIR}"
        QUILLON_CORPUS_DIR="${PROJECT_SOURCE_DIR}/../shared/corpus"
        QUILLON_TEST_DATA_DIR="${CMAKE_CURRENT_SOURCE_DIR}/data")
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    quillon_settings(${name})
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "TZ=Europe/Paris;QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8"
        TIMEOUT 300)
endfunction()
