# SPDX-License-Identifier: MIT
# The pictures of the documents and the gallery's text are what scripts/pictures makes of this build. Pictures are
# compared by their sizes, as fonts are drawn a little differently by other versions of their library.
#   cmake -DSOURCE=... -DBUILD=... -P check_pictures.cmake
set(made ${BUILD}/pictures-check)
set(anew "run scripts/pictures, look at what has changed, and commit it")
file(REMOVE_RECURSE ${made})
execute_process(COMMAND ${SOURCE}/scripts/pictures ${made} ${BUILD} COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE expected RELATIVE ${made} ${made}/*.png)
file(GLOB_RECURSE present RELATIVE ${SOURCE}/docs ${SOURCE}/docs/*.png)
if(NOT expected STREQUAL present)
    list(REMOVE_ITEM expected ${present})
    file(GLOB_RECURSE surplus RELATIVE ${made} ${made}/*.png)
    list(REMOVE_ITEM present ${surplus})
    message(FATAL_ERROR "docs lacks these pictures: ${expected}; nothing makes these: ${present}: ${anew}")
endif()
foreach(picture IN LISTS present)
    # The mark of the file and the width and height.
    file(READ ${made}/${picture} size LIMIT 24 HEX)
    file(READ ${SOURCE}/docs/${picture} shown LIMIT 24 HEX)
    if(NOT size STREQUAL shown)
        message(SEND_ERROR "docs/${picture} has another size: ${anew}")
    endif()
endforeach()
file(READ ${made}/GALLERY.md text)
file(READ ${SOURCE}/docs/GALLERY.md shown)
if(NOT text STREQUAL shown)
    message(SEND_ERROR "docs/GALLERY.md is out of date: ${anew}")
endif()
