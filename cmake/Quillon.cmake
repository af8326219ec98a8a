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
