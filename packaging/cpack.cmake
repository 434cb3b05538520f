# SPDX-FileCopyrightText: The Lorvanite authors
# SPDX-License-Identifier: GPL-3.0-or-later

# Read by CPack once for each package: which of the two layouts goes into it.
list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 build_folder)
if(CPACK_GENERATOR STREQUAL "DEB")
    set(layout package)
else()
    set(layout portable)
endif()
set(CPACK_INSTALL_CMAKE_PROJECTS "${build_folder};lorvanite;${layout};/")
