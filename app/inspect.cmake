# The inspection of a database file as a library of its own, for the command line and for its tests.
if(NOT TARGET relvane_inspect)
    add_library(relvane_inspect STATIC
        ${CMAKE_SOURCE_DIR}/app/inspect.cpp ${CMAKE_SOURCE_DIR}/app/inspect.h
        ${CMAKE_SOURCE_DIR}/app/inspect_designs.cpp ${CMAKE_SOURCE_DIR}/app/inspect_designs.h
        ${CMAKE_SOURCE_DIR}/app/inspect_macros.cpp ${CMAKE_SOURCE_DIR}/app/inspect_macros.h
        ${CMAKE_SOURCE_DIR}/app/inspect_modules.cpp ${CMAKE_SOURCE_DIR}/app/inspect_modules.h
        ${CMAKE_SOURCE_DIR}/app/json_writer.cpp ${CMAKE_SOURCE_DIR}/app/json_writer.h)
    target_include_directories(relvane_inspect PUBLIC ${CMAKE_SOURCE_DIR}/app)
    target_link_libraries(relvane_inspect PUBLIC relvane_access relvane_jet)
    relvane_compile_options(relvane_inspect)
endif()
