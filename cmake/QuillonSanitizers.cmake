# Builds instrumented for the reliability runs (scripts/sanitize, scripts/fuzz).
#
# QUILLON_SANITIZE: sanitizers for every target, as Clang or GCC spell them after
# -fsanitize= ("address,undefined" or "thread"). Undefined behaviour stops the program.
#
# QUILLON_FUZZ: builds the libFuzzer targets of fuzz/ (Clang only). Every target of the
# project is then compiled with coverage feedback for libFuzzer, under AddressSanitizer and
# UndefinedBehaviorSanitizer, so that a fault in the product stops the fuzzer at once.
set(QUILLON_SANITIZE "" CACHE STRING "Sanitizers for every target (address,undefined or thread)")

set(QUILLON_FUZZ_ENABLED OFF)
if(QUILLON_FUZZ)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        set(QUILLON_FUZZ_ENABLED ON)
        add_compile_options(-fsanitize=fuzzer-no-link)
        if(NOT QUILLON_SANITIZE)
            set(QUILLON_SANITIZE "address,undefined")
        endif()
    else()
        message(WARNING "QUILLON_FUZZ needs Clang (libFuzzer); ${CMAKE_CXX_COMPILER_ID} builds no fuzz target. "
                        "Configure with -DCMAKE_CXX_COMPILER=clang++ (scripts/fuzz does).")
    endif()
endif()

if(QUILLON_SANITIZE)
    add_compile_options(-fsanitize=${QUILLON_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${QUILLON_SANITIZE})
    if(QUILLON_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()
