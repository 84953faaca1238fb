# The folders of that name in src/platform hold what is this system's own.
set(SWABBY_SYSTEM linux)
if(APPLE)
    set(SWABBY_SYSTEM mac)
endif()

# One set of headers is compiled once for every room, program and test of the house.
function(swabby_precompile name)
    get_property(owner GLOBAL PROPERTY SWABBY_PRECOMPILED)
    if(owner)
        target_precompile_headers(${name} REUSE_FROM ${owner})
    else()
        target_precompile_headers(${name} PRIVATE <QtCore/QtCore> <algorithm> <cstdint> <optional> <string> <vector>)
        set_property(GLOBAL PROPERTY SWABBY_PRECOMPILED ${name})
    endif()
endfunction()

# swabby_neighbours(FOLDER NEIGHBOUR …): the rooms whose headers the files below src/FOLDER may include, each by
# its folder; `rooms` among the tests reads every include against it.
function(swabby_neighbours folder)
    list(JOIN ARGN " " neighbours)
    set_property(GLOBAL APPEND PROPERTY SWABBY_NEIGHBOURS "${folder}: ${neighbours}")
endfunction()

# swabby_room(SOURCES … NEIGHBOURS … LIBRARIES … PRIVATE …): this folder as one room of the house, the target
# swabby_FOLDER. NEIGHBOURS lists the rooms it may know, LIBRARIES what its headers use of other people's, PRIVATE
# what its sources use; includes start at src/.
function(swabby_room)
    cmake_parse_arguments(room "" "" "SOURCES;NEIGHBOURS;LIBRARIES;PRIVATE" ${ARGN})
    file(RELATIVE_PATH folder ${CMAKE_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
    swabby_neighbours(${folder} ${room_NEIGHBOURS})
    string(REPLACE / _ name swabby_${folder})
    list(TRANSFORM room_NEIGHBOURS REPLACE / _)
    list(TRANSFORM room_NEIGHBOURS PREPEND swabby_)
    add_library(${name} OBJECT ${room_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC Qt6::Core Threads::Threads ${room_NEIGHBOURS} ${room_LIBRARIES}
        PRIVATE swabby_warnings ${room_PRIVATE})
    swabby_precompile(${name})
    set_property(GLOBAL APPEND PROPERTY SWABBY_ROOMS ${name})
    set_property(GLOBAL APPEND PROPERTY SWABBY_LIBRARIES ${room_PRIVATE})
endfunction()

# swabby_late_library(TARGET NAME … SOURCES … LIBRARIES …): libswabby-NAME.so, which is loaded when it is
# first needed, so that the libraries it uses take no memory before.
function(swabby_late_library target)
    cmake_parse_arguments(late "" "NAME" "SOURCES;LIBRARIES" ${ARGN})
    add_library(${target} MODULE ${late_SOURCES})
    target_link_libraries(${target} PRIVATE swabby_core swabby_warnings ${late_LIBRARIES})
    set_target_properties(${target} PROPERTIES OUTPUT_NAME swabby-${late_NAME} CXX_VISIBILITY_PRESET hidden
        INSTALL_RPATH ${SWABBY_ORIGIN})
    install(TARGETS ${target} LIBRARY DESTINATION ${SWABBY_LIBRARY_FOLDER})
    set_property(GLOBAL APPEND PROPERTY SWABBY_LATE_LIBRARIES ${target})
endfunction()

# swabby_test(some_thing_test SOURCES … LIBRARIES …): one Qt Test program, run by ctest: SomeThingTest.cpp, and the
# other sources it needs. Nothing for one of SWABBY_UNBUILT_TESTS.
function(swabby_test name)
    if(name IN_LIST SWABBY_UNBUILT_TESTS)
        return()
    endif()
    cmake_parse_arguments(test "" "" "SOURCES;LIBRARIES" ${ARGN})
    string(REPLACE _ ";" words ${name})
    set(source)
    foreach(word IN LISTS words)
        string(SUBSTRING ${word} 0 1 initial)
        string(SUBSTRING ${word} 1 -1 rest)
        string(TOUPPER ${initial} initial)
        string(APPEND source ${initial}${rest})
    endforeach()
    add_executable(${name} ${source}.cpp ${test_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE swabby_core swabby_warnings swabby_test_support Qt6::Test
        ${test_LIBRARIES})
    swabby_precompile(${name})
    target_compile_definitions(${name} PRIVATE SWABBY_FIXTURES="${CMAKE_SOURCE_DIR}/tests/fixtures")
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 900
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()
