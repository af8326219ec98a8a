# The macOS application bundle Quillon.app, made from the `quillon` target, and its disk image.
#   quillon_make_bundle(quillon)
# sets the bundle's Info.plist (name, version from project(), identifier, minimum system, icon)
# and its install: `cmake --install` (or `cpack`, which installs first) puts Quillon.app in the
# install prefix with quillon-bilan inside it (Contents/MacOS), runs macdeployqt to bring Qt and
# libplist inside, then signs the whole bundle ad hoc. `cpack` makes Quillon-<version>.dmg
# (drag-and-drop: the application and a link to /Applications).
# Included on macOS only; nothing here touches another system's build.

set(QUILLON_BUNDLE_IDENTIFIER "fr.quillon.Quillon" CACHE STRING "CFBundleIdentifier of Quillon.app")

set(_quillon_macos_dir "${CMAKE_CURRENT_LIST_DIR}/macos")

# The oldest macOS the bundle runs on. Without a deployment target the compiler builds for
# this Mac's own system, and Homebrew's Qt is built for it too: that is then the minimum.
function(_quillon_minimum_macos out)
    if(CMAKE_OSX_DEPLOYMENT_TARGET)
        set(${out} "${CMAKE_OSX_DEPLOYMENT_TARGET}" PARENT_SCOPE)
        return()
    endif()
    execute_process(COMMAND sw_vers -productVersion
        OUTPUT_VARIABLE version OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    string(REGEX MATCH "^[0-9]+" major "${version}")
    if(NOT major)
        set(major 12) # the oldest system that Qt 6.4 supports
    endif()
    set(${out} "${major}.0" PARENT_SCOPE)
endfunction()

# Quillon.icns from Quillon-icon.png (1024 pixels; Quillon-icon.svg is its drawing), with the
# stock sips and iconutil; made again when the picture changes. Without them: no icon.
function(_quillon_make_icns icns)
    set(picture "${_quillon_macos_dir}/Quillon-icon.png")
    set_property(DIRECTORY "${PROJECT_SOURCE_DIR}" APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${picture}")
    if(NOT "${picture}" IS_NEWER_THAN "${icns}")
        return()
    endif()
    get_filename_component(folder "${icns}" DIRECTORY)
    set(iconset "${folder}/Quillon.iconset")
    file(REMOVE_RECURSE "${iconset}")
    file(MAKE_DIRECTORY "${iconset}")
    set(commands "")
    foreach(size 16 32 128 256 512)
        math(EXPR double "${size} * 2")
        # One command per list item, its words separated by "|".
        list(APPEND commands
            "sips|-z|${size}|${size}|${picture}|--out|${iconset}/icon_${size}x${size}.png"
            "sips|-z|${double}|${double}|${picture}|--out|${iconset}/icon_${size}x${size}@2x.png")
    endforeach()
    list(APPEND commands "iconutil|-c|icns|-o|${icns}|${iconset}")
    foreach(command IN LISTS commands)
        string(REPLACE "|" " " shown "${command}")
        string(REPLACE "|" ";" command "${command}")
        execute_process(COMMAND ${command} RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE error)
        if(NOT status EQUAL 0)
            message(WARNING "Icône de Quillon.app non construite : ${shown} a échoué (${status}) ${error}")
            file(REMOVE "${icns}")
            return()
        endif()
    endforeach()
endfunction()

function(_quillon_find_macdeployqt out)
    set(hints "")
    if(TARGET Qt6::qmake)
        get_target_property(qmake Qt6::qmake IMPORTED_LOCATION)
        get_filename_component(qt_bin "${qmake}" DIRECTORY)
        list(APPEND hints "${qt_bin}")
    endif()
    if(QT6_INSTALL_PREFIX)
        list(APPEND hints "${QT6_INSTALL_PREFIX}/bin")
    endif()
    find_program(QUILLON_MACDEPLOYQT macdeployqt HINTS ${hints} "${Qt6_DIR}/../../../bin")
    set(${out} "${QUILLON_MACDEPLOYQT}" PARENT_SCOPE)
endfunction()

function(quillon_make_bundle target)
    if(NOT APPLE)
        return()
    endif()
    set(QUILLON_BUNDLE_EXECUTABLE Quillon)
    _quillon_minimum_macos(QUILLON_MACOS_MINIMUM)

    set(icns "${CMAKE_BINARY_DIR}/macos/Quillon.icns")
    _quillon_make_icns("${icns}")
    set(QUILLON_BUNDLE_ICON "")
    if(EXISTS "${icns}")
        set(QUILLON_BUNDLE_ICON Quillon.icns)
        target_sources(${target} PRIVATE "${icns}")
        set_source_files_properties("${icns}" TARGET_DIRECTORY ${target}
            PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
    endif()

    # Filled here; CMake copies it into the bundle as it stands (nothing left to substitute).
    configure_file("${_quillon_macos_dir}/Info.plist.in" "${CMAKE_BINARY_DIR}/macos/Info.plist" @ONLY)
    set_target_properties(${target} PROPERTIES
        MACOSX_BUNDLE TRUE
        OUTPUT_NAME ${QUILLON_BUNDLE_EXECUTABLE}
        MACOSX_BUNDLE_INFO_PLIST "${CMAKE_BINARY_DIR}/macos/Info.plist")

    _quillon_install_bundle(${target})
    _quillon_disk_image("${icns}")
endfunction()

# Install: the bundle, quillon-bilan inside it, then macdeployqt and the ad-hoc signature.
function(_quillon_install_bundle target)
    install(TARGETS ${target} BUNDLE DESTINATION .)
    set(bundle "\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/Quillon.app")
    set(deploy_arguments "\"${bundle}\" \"-qmldir=${PROJECT_SOURCE_DIR}/src/ui\" -always-overwrite")
    if(TARGET quillon-bilan)
        # Beside the application's own executable, it finds the same Qt frameworks and reads the
        # bundle's version keys.
        install(TARGETS quillon-bilan RUNTIME DESTINATION Quillon.app/Contents/MacOS)
        string(APPEND deploy_arguments " \"-executable=${bundle}/Contents/MacOS/quillon-bilan\"")
    endif()

    _quillon_find_macdeployqt(macdeployqt)
    if(macdeployqt)
        install(CODE "
            message(STATUS \"macdeployqt: ${bundle}\")
            execute_process(COMMAND \"${macdeployqt}\" ${deploy_arguments} COMMAND_ERROR_IS_FATAL ANY)")
    else()
        message(WARNING "macdeployqt introuvable : Quillon.app installé dépendra du Qt de cette machine.")
    endif()
    # Every executable and library inside must be signed again after macdeployqt rewrote them.
    install(CODE "
        execute_process(COMMAND codesign --force --deep --sign - \"${bundle}\" COMMAND_ERROR_IS_FATAL ANY)
        execute_process(COMMAND codesign --verify --deep --strict \"${bundle}\" COMMAND_ERROR_IS_FATAL ANY)")
endfunction()

function(_quillon_disk_image icns)
    set(CPACK_GENERATOR DragNDrop)
    set(CPACK_PACKAGE_NAME Quillon)
    set(CPACK_PACKAGE_VENDOR Quillon)
    set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
    set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
    set(CPACK_PACKAGE_FILE_NAME "Quillon-${PROJECT_VERSION}")
    set(CPACK_DMG_VOLUME_NAME "Quillon ${PROJECT_VERSION}")
    set(CPACK_DMG_FORMAT UDZO)
    if(EXISTS "${icns}")
        set(CPACK_PACKAGE_ICON "${icns}")
    endif()
    include(CPack)
endfunction()
