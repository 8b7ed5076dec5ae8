# Run by cpack before packing. Every file of the package gets the time of the commit, so that two builds of it are
# identical byte for byte. A tree without git needs SOURCE_DATE_EPOCH set.
if(CPACK_KALVERA_MISSING)
    message(FATAL_ERROR "Missing when the build was configured: ${CPACK_KALVERA_MISSING}")
endif()
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(COMMAND git -C ${CPACK_KALVERA_SOURCE} log -1 --format=%ct
                    OUTPUT_VARIABLE time RESULT_VARIABLE result OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "There is no commit to take the time from; set SOURCE_DATE_EPOCH.")
    endif()
    set(ENV{SOURCE_DATE_EPOCH} ${time})
endif()
