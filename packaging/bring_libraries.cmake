# SPDX-FileCopyrightText: The Lorvanite authors
# SPDX-License-Identifier: GPL-3.0-or-later

# Run while the portable folder is installed; FOLDER is that folder. Copies Qt's plugins, the
# libraries of the program and of the plugins, those that the program loads itself, and the fonts of
# charts and windows from this machine, with the licence of each Debian package that they come from.
# The C library and the graphics driver are the user's own. libmpv is, too: with its codecs it is
# larger than all the rest.
block()
cmake_policy(VERSION 3.25)
execute_process(COMMAND qmake6 -query QT_INSTALL_LIBS OUTPUT_VARIABLE folder_of_libraries
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(loaded ${folder_of_libraries}/libcurl.so.4 ${folder_of_libraries}/libqpdf.so.29)
execute_process(COMMAND qmake6 -query QT_INSTALL_PLUGINS OUTPUT_VARIABLE qt_plugins
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
# Without the plugins for OpenGL no graphics driver is loaded beside libraries of another age.
set(plugins
    iconengines/libqsvgicon.so
    imageformats/libqgif.so
    imageformats/libqjpeg.so
    imageformats/libqsvg.so
    platforminputcontexts/libcomposeplatforminputcontextplugin.so
    platforminputcontexts/libibusplatforminputcontextplugin.so
    platforms/libqoffscreen.so
    platforms/libqwayland-generic.so
    platforms/libqxcb.so
    printsupport/libcupsprintersupport.so
    wayland-decoration-client/libbradient.so
    wayland-shell-integration/libxdg-shell.so)
list(TRANSFORM plugins PREPEND ${qt_plugins}/ OUTPUT_VARIABLE plugin_files)

file(GET_RUNTIME_DEPENDENCIES EXECUTABLES ${FOLDER}/lorvanite
    ${FOLDER}/lorvanite-exchange LIBRARIES ${plugin_files} ${loaded}
    RESOLVED_DEPENDENCIES_VAR libraries UNRESOLVED_DEPENDENCIES_VAR missing
    PRE_EXCLUDE_REGEXES "^ld-linux" "^lib(c|m|dl|rt|pthread|resolv)\\.so\\."
        "^lib(GLX|EGL)_" "^lib(drm|gbm|vulkan)\\.so")
if(missing)
    message(FATAL_ERROR "Libraries not found: ${missing}")
endif()
list(APPEND libraries ${loaded})

set(fonts)
foreach(style IN ITEMS Regular Bold Italic BoldItalic)
    list(APPEND fonts /usr/share/fonts/truetype/liberation/LiberationSans-${style}.ttf)
endforeach()
file(GLOB inter /usr/share/fonts/opentype/inter/Inter-Regular.otf
    /usr/share/fonts/opentype/inter/Inter-Bold.otf)

# bring FILE FOLDER: a copy under the name by which it is looked for, not a link.
function(bring file folder)
    file(REAL_PATH ${file} real)
    get_filename_component(name ${file} NAME)
    file(MAKE_DIRECTORY ${folder})
    file(COPY_FILE ${real} ${folder}/${name})
    file(CHMOD ${folder}/${name} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endfunction()
foreach(library IN LISTS libraries)
    bring(${library} ${FOLDER}/lib)
endforeach()
foreach(plugin IN LISTS plugins)
    get_filename_component(kind ${plugin} DIRECTORY)
    bring(${qt_plugins}/${plugin} ${FOLDER}/plugins/${kind})
endforeach()
foreach(font IN LISTS fonts inter)
    bring(${font} ${FOLDER}/fonts)
endforeach()
file(WRITE ${FOLDER}/qt.conf "[Paths]\nPrefix=.\nPlugins=plugins\n")

# The package of a file is known by the path before or after /lib became a link to /usr/lib.
set(packages)
foreach(file IN LISTS libraries plugin_files fonts inter)
    file(REAL_PATH ${file} real)
    string(REGEX REPLACE "^/usr/lib/" "/lib/" old ${real})
    execute_process(COMMAND dpkg-query --search ${real} ${old} OUTPUT_VARIABLE found ERROR_QUIET)
    if(NOT found MATCHES "^([a-z0-9.+-]+)(:[a-z0-9]+)?: ")
        message(FATAL_ERROR "No package owns ${real}")
    endif()
    list(APPEND packages ${CMAKE_MATCH_1})
endforeach()
list(REMOVE_DUPLICATES packages)
list(SORT packages)
set(list "These Debian packages are contained, unchanged. Their source is Debian's, under the same name\nand version.\n\n")
foreach(package IN LISTS packages)
    bring(/usr/share/doc/${package}/copyright ${FOLDER}/licences/${package})
    execute_process(COMMAND dpkg-query --show -f "\${source:Package} \${source:Version}\\n" ${package}
        OUTPUT_VARIABLE source COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCH "[^\n]+" source "${source}")
    string(APPEND list "${package}, from ${source}\n")
endforeach()
file(WRITE ${FOLDER}/licences/packages.txt "${list}")
# The texts that the licences refer to.
file(GLOB common /usr/share/common-licenses/*)
foreach(text IN LISTS common)
    bring(${text} ${FOLDER}/licences/common-licenses)
endforeach()
endblock()
