# Compiles the help file napoveda.chm in the folder OUT from the pages in SOURCE, with CHMCMD, ICONV and PYTHON. The
# pages are kept in UTF-8 and compiled in Windows-1250, which the usual viewers expect of contents and index.
file(REMOVE_RECURSE ${OUT})
file(MAKE_DIRECTORY ${OUT})
file(GLOB pictures ${SOURCE}/*.png)
file(GLOB pages ${SOURCE}/*.html ${SOURCE}/napoveda.*)
file(COPY ${pictures} DESTINATION ${OUT})

# Leaves out pictures that have not been taken yet.
function(leave_out_missing_pictures page)
    string(REGEX MATCHALL "src=\"obr-[a-z-]+\\.png\"" names "${${page}}")
    foreach(name IN LISTS names)
        string(REGEX REPLACE "src=\"(.*)\"" "\\1" file "${name}")
        if(NOT EXISTS ${SOURCE}/${file})
            message(STATUS "Help: no picture ${file}")
            string(REGEX REPLACE "<p align=\"center\"><img ${name}[^>]*></p>|<br>[ \n]*<img ${name}[^>]*>" "" ${page} "${${page}}")
        endif()
    endforeach()
    set(${page} "${${page}}" PARENT_SCOPE)
endfunction()

foreach(path IN LISTS pages)
    get_filename_component(name ${path} NAME)
    file(READ ${path} text)
    leave_out_missing_pictures(text)
    string(REPLACE "charset=utf-8" "charset=windows-1250" text "${text}")
    file(WRITE ${OUT}/unicode.tmp "${text}")
    execute_process(COMMAND ${ICONV} -f UTF-8 -t WINDOWS-1250 unicode.tmp WORKING_DIRECTORY ${OUT}
                    OUTPUT_FILE ${OUT}/${name} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
file(REMOVE ${OUT}/unicode.tmp)

# chmcmd looks for all files in its working directory and reports failures only in its output.
execute_process(COMMAND ${CHMCMD} napoveda.hhp WORKING_DIRECTORY ${OUT}
                OUTPUT_VARIABLE told ERROR_VARIABLE told RESULT_VARIABLE result)
if(NOT result EQUAL 0 OR NOT EXISTS ${OUT}/napoveda.chm OR told MATCHES "[Ee]rror|[Ww]arning|not found|does not exist")
    message(FATAL_ERROR "The help file cannot be compiled:\n${told}")
endif()
execute_process(COMMAND ${PYTHON} -B ${CMAKE_CURRENT_LIST_DIR}/helpTimes.py ${OUT}/napoveda.chm
                COMMAND_ERROR_IS_FATAL ANY)
