# Makes the ready-made pair of data files in FOLDER with TOOL, unless one of them is there.
if(NOT EXISTS ${FOLDER}/data.ddb AND NOT EXISTS ${FOLDER}/pictures.ddb)
    execute_process(COMMAND ${TOOL} create ${FOLDER} COMMAND_ERROR_IS_FATAL ANY)
elseif(NOT EXISTS ${FOLDER}/data.ddb OR NOT EXISTS ${FOLDER}/pictures.ddb)
    message(WARNING "${FOLDER} holds only one of the two data files; nothing was made.")
endif()

# The pages and the help are the program's own: they follow it.
file(GLOB pages ${PAGES}/*.htm)
file(COPY ${pages} ${HELP} DESTINATION ${FOLDER})
