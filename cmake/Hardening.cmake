# Hardening of optimised builds, and binaries without paths of the build.
include(CheckPIESupported)
check_pie_supported(OUTPUT_VARIABLE pie_trouble LANGUAGES CXX)
if(NOT CMAKE_CXX_LINK_PIE_SUPPORTED)
    message(WARNING "Position independent executables cannot be linked: ${pie_trouble}")
endif()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

set(optimised "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
add_compile_options(
    "$<${optimised}:-fstack-protector-strong>"
    "$<${optimised}:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>")
# The checked functions would hide overruns from the sanitizers. Undefined first: some compilers define it by themselves.
if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    add_compile_options("$<${optimised}:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
endif()
if(UNIX AND NOT APPLE)
    add_link_options("$<${optimised}:LINKER:-z,relro,-z,now>")
endif()

# Resources without the times of their files, which differ from one checkout to the next.
set(CMAKE_AUTORCC_OPTIONS --format-version 1)
