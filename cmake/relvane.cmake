# How the project's libraries, tests and fuzz targets are declared.

# Warnings of our own code are errors. NDEBUG is never set: checks stay on in every build.
function(relvane_compile_options target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wconversion -Werror)
    if(RELVANE_FUZZING)
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
endfunction()

# relvane_library(NAME FOLDER [NAME_OF_LIBRARY_IT_SEES ...])
#
# Makes the library relvane_NAME of all sources that lie directly in FOLDER. Its headers are reached as
# "NAME/file.h", through a folder of links in the build tree that holds just this library's headers; that is
# what keeps, say, core from including a header of sqlite by way of src/platform.
function(relvane_library name folder)
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp)
    file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.h)
    file(GLOB forms CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.ui ${CMAKE_SOURCE_DIR}/${folder}/*.qrc)
    set(links ${CMAKE_BINARY_DIR}/include/${name})
    file(REMOVE_RECURSE ${links})
    file(MAKE_DIRECTORY ${links}/${name})
    foreach(header IN LISTS headers)
        get_filename_component(file ${header} NAME)
        file(CREATE_LINK ${header} ${links}/${name}/${file} SYMBOLIC)
    endforeach()

    add_library(relvane_${name} STATIC ${sources} ${headers} ${forms})
    target_include_directories(relvane_${name} PUBLIC ${links})
    foreach(seen IN LISTS ARGN)
        target_link_libraries(relvane_${name} PUBLIC relvane_${seen})
    endforeach()
    if(forms OR name STREQUAL "qt")
        set_target_properties(relvane_${name} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
    endif()
    relvane_compile_options(relvane_${name})
endfunction()

# relvane_test(NAME LIBRARY ...): a GoogleTest program of all *_test.cpp files in tests/NAME.
function(relvane_test name)
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${name}/*.cpp)
    add_executable(test_${name} ${sources})
    target_link_libraries(test_${name} PRIVATE ${ARGN} relvane_test_support GTest::gtest GTest::gmock GTest::gtest_main)
    relvane_compile_options(test_${name})
    add_test(NAME ${name} COMMAND test_${name})
    set_tests_properties(${name} PROPERTIES WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} TIMEOUT 600)
endfunction()
