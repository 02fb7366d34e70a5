# The spreadsheet service: a module over LibreOffice, built where its development files are (libreoffice-dev). The
# programs load it when a workbook is wanted, and run without it.

# relvane_spreadsheet_module(FOLDER): lib/relvane/spreadsheet.so of the sources in FOLDER; nothing without LibreOffice.
function(relvane_spreadsheet_module folder)
    find_program(RELVANE_SOFFICE soffice)
    if(NOT RELVANE_SOFFICE)
        return()
    endif()
    file(REAL_PATH ${RELVANE_SOFFICE} soffice)
    get_filename_component(program ${soffice} DIRECTORY)
    get_filename_component(office ${program} DIRECTORY)
    find_program(RELVANE_CPPUMAKER cppumaker HINTS ${office}/sdk/bin)
    find_path(RELVANE_OFFICE_INCLUDE sal/types.h HINTS ${office}/sdk/include PATH_SUFFIXES libreoffice)
    if(NOT RELVANE_CPPUMAKER OR NOT RELVANE_OFFICE_INCLUDE)
        return()
    endif()

    # The interfaces as headers, made of LibreOffice's own lists of its types.
    set(types ${program}/types.rdb ${program}/types/offapi.rdb)
    set(made ${CMAKE_BINARY_DIR}/office)
    file(MAKE_DIRECTORY ${made})
    add_custom_command(
        OUTPUT ${made}/made
        COMMAND ${RELVANE_CPPUMAKER} -Gc -O${made} ${types}
        COMMAND ${CMAKE_COMMAND} -E touch ${made}/made
        DEPENDS ${types}
        COMMENT "Making the headers of LibreOffice's interfaces"
        VERBATIM)
    add_custom_target(office_headers DEPENDS ${made}/made)

    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp ${CMAKE_SOURCE_DIR}/${folder}/*.h)
    add_library(relvane_spreadsheet_module MODULE ${sources})
    add_dependencies(relvane_spreadsheet_module office_headers)
    set_target_properties(relvane_spreadsheet_module PROPERTIES
        PREFIX "" OUTPUT_NAME spreadsheet
        LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib/relvane
        BUILD_RPATH ${program} INSTALL_RPATH ${program})
    # The module brings its own copy of what it shares with the program.
    set_target_properties(relvane_platform PROPERTIES POSITION_INDEPENDENT_CODE ON)
    get_filename_component(above ${CMAKE_SOURCE_DIR}/${folder} DIRECTORY)
    target_include_directories(relvane_spreadsheet_module PRIVATE ${above})
    target_include_directories(relvane_spreadsheet_module SYSTEM PRIVATE ${made} ${RELVANE_OFFICE_INCLUDE})
    target_compile_definitions(relvane_spreadsheet_module PRIVATE
        LINUX UNX GCC CPPU_ENV=gcc3 RELVANE_OFFICE_FOLDER="${program}")
    target_link_directories(relvane_spreadsheet_module PRIVATE ${office}/sdk/lib)
    target_link_libraries(relvane_spreadsheet_module PRIVATE relvane_spreadsheet relvane_platform
        uno_cppuhelpergcc3 uno_cppu uno_salhelpergcc3 uno_sal Threads::Threads)
    relvane_compile_options(relvane_spreadsheet_module)
    install(TARGETS relvane_spreadsheet_module LIBRARY DESTINATION lib/relvane) # where the programs look
endfunction()
