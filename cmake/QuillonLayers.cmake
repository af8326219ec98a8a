# The layers of src/, lowest first. A file may include headers of its own folder and of the
# folders of lower layers only; folders of one layer do not include each other.
#   quillon_check_layers(<src dir>)   stops with an error naming each file that breaks this.
# Run at configure time, and again by the build whenever a source file changes, through
# `cmake -DQUILLON_SOURCE_DIR=<src> -DQUILLON_STAMP=<file> -P QuillonLayers.cmake`.

set(QUILLON_LAYERS
    "core"
    "sources"
    "collectors diagnostics platform/capture platform/macos"
    "state platform/factory"
    "live"
    "records"
    "ui cli")

# The layer (0 = lowest) of a path relative to src/, or -1 when it belongs to none.
function(quillon_layer_of path out_rank out_folder)
    set(rank 0)
    set(found -1)
    set(found_folder "")
    foreach(layer IN LISTS QUILLON_LAYERS)
        string(REPLACE " " ";" folders "${layer}")
        foreach(folder IN LISTS folders)
            string(LENGTH "${folder}" length)
            string(LENGTH "${found_folder}" found_length)
            if((path STREQUAL folder OR path MATCHES "^${folder}/") AND length GREATER found_length)
                set(found ${rank})
                set(found_folder "${folder}")
            endif()
        endforeach()
        math(EXPR rank "${rank} + 1")
    endforeach()
    set(${out_rank} ${found} PARENT_SCOPE)
    set(${out_folder} "${found_folder}" PARENT_SCOPE)
endfunction()

function(quillon_check_layers src_dir)
    file(GLOB_RECURSE files RELATIVE "${src_dir}" "${src_dir}/*.h" "${src_dir}/*.cpp" "${src_dir}/*.mm")
    set(errors "")
    foreach(file IN LISTS files)
        quillon_layer_of("${file}" rank folder)
        if(rank EQUAL -1)
            continue()
        endif()
        file(STRINGS "${src_dir}/${file}" includes REGEX "^[ \t]*#[ \t]*(include|import)[ \t]*\"")
        foreach(line IN LISTS includes)
            string(REGEX REPLACE "^[^\"]*\"([^\"]*)\".*$" "\\1" header "${line}")
            quillon_layer_of("${header}" header_rank header_folder)
            if(header_rank EQUAL -1 OR header_folder STREQUAL folder)
                continue()
            endif()
            if(NOT header_rank LESS rank)
                string(APPEND errors "\n  src/${file} (${folder}) includes ${header} (${header_folder}), a layer that is not below it")
            endif()
        endforeach()
    endforeach()
    if(errors)
        list(JOIN QUILLON_LAYERS " → " order)
        message(FATAL_ERROR "Layering broken:${errors}\nThe layers, lowest first: ${order}")
    endif()
endfunction()

if(CMAKE_SCRIPT_MODE_FILE)
    quillon_check_layers("${QUILLON_SOURCE_DIR}")
    file(TOUCH "${QUILLON_STAMP}")
endif()
