# Common settings of every target, and the function that keeps the layers in order.

option(QUORVI_CCACHE "Compile through ccache when it is installed" OFF)
set(QUORVI_SANITIZE "" CACHE STRING "Sanitizers to build with, such as address,undefined")

if(QUORVI_CCACHE)
    find_program(QUORVI_CCACHE_PROGRAM ccache)
    if(QUORVI_CCACHE_PROGRAM)
        set(CMAKE_CXX_COMPILER_LAUNCHER ${QUORVI_CCACHE_PROGRAM})
    endif()
endif()

add_library(quorvi_options INTERFACE)
target_compile_options(quorvi_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
    -Wno-missing-field-initializers)  # designated initialisers leave out what has a default
target_include_directories(quorvi_options INTERFACE ${PROJECT_SOURCE_DIR})
if(QUORVI_SANITIZE)
    add_compile_options(-fsanitize=${QUORVI_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${QUORVI_SANITIZE})
    if(QUORVI_SANITIZE MATCHES undefined)
        add_compile_options(-fno-sanitize-recover=undefined)
        if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
            # They fail on coroutines, and on the empty stack of the JSON library.
            add_compile_options(-fno-sanitize=function,pointer-overflow)
        endif()
    endif()
endif()

# quorvi_layer(NAME SOURCES … USES … [LIBRARIES …]): a static library of the project. USES names
# project targets, which must be defined already: a back edge between layers fails at configure time.
function(quorvi_layer name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES;LIBRARIES" ${ARGN})
    foreach(layer IN LISTS ARG_USES)
        if(NOT TARGET ${layer})
            message(FATAL_ERROR "${name} may not use ${layer}: that layer comes later")
        endif()
    endforeach()
    if(ARG_SOURCES)
        add_library(${name} STATIC ${ARG_SOURCES})
        target_link_libraries(${name} PUBLIC quorvi_options ${ARG_USES} PRIVATE ${ARG_LIBRARIES})
    else()
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE quorvi_options ${ARG_USES} ${ARG_LIBRARIES})
    endif()
endfunction()

# quorvi_test(NAME LABEL SOURCES … USES … [LIBRARIES …]): a GoogleTest executable whose tests are
# discovered one by one and carry the layer's label.
function(quorvi_test name label)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES;LIBRARIES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE quorvi_options ${ARG_USES} ${ARG_LIBRARIES}
        GTest::gtest GTest::gtest_main)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES LABELS ${label} TIMEOUT 120)
endfunction()
