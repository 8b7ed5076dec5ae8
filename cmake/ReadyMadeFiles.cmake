# Creates the pair of data files in FOLDER with TOOL unless one of them exists.
if(NOT EXISTS ${FOLDER}/data.ddb AND NOT EXISTS ${FOLDER}/pictures.ddb)
    execute_process(COMMAND ${TOOL} create ${FOLDER} COMMAND_ERROR_IS_FATAL ANY)
elseif(NOT EXISTS ${FOLDER}/data.ddb OR NOT EXISTS ${FOLDER}/pictures.ddb)
    message(WARNING "${FOLDER} holds only one of the two data files; nothing was made.")
endif()

# Pages and help belong to the program, so they are always renewed.
file(GLOB pages ${PAGES}/*.htm)
file(COPY ${pages} ${HELP} DESTINATION ${FOLDER})
