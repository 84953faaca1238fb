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

# swabby_room(NAME SOURCES … NEIGHBOURS … PRIVATE …): one room of the house. NEIGHBOURS lists the rooms it
# may know, PRIVATE the libraries it uses itself; includes start at src/.
function(swabby_room name)
    cmake_parse_arguments(room "" "" "SOURCES;NEIGHBOURS;PRIVATE" ${ARGN})
    add_library(${name} OBJECT ${room_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC Qt6::Core Threads::Threads ${room_NEIGHBOURS}
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
        INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${target} LIBRARY DESTINATION lib/swabby)
    set_property(GLOBAL APPEND PROPERTY SWABBY_LATE_LIBRARIES ${target})
endfunction()

# swabby_test(NAME SOURCES … LIBRARIES …): one Qt Test program, run by ctest.
function(swabby_test name)
    cmake_parse_arguments(test "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name} ${test_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE swabby_core swabby_warnings swabby_test_support Qt6::Test
        ${test_LIBRARIES})
    swabby_precompile(${name})
    target_compile_definitions(${name} PRIVATE SWABBY_FIXTURES="${CMAKE_SOURCE_DIR}/tests/fixtures")
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 300
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()
