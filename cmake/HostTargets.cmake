# SPDX-License-Identifier: Apache-2.0
# The functions with which every room describes its targets, so that its CMakeLists.txt is nearly pure data.

# host_install_headers(file...)
#
# Installs headers for app authors under their room. VYR_INSTALLED_HEADERS, a global property, lists them all, by their
# path from the top of the tree.
function(host_install_headers)
    foreach(header IN LISTS ARGN)
        file(RELATIVE_PATH path "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}/${header}")
        get_filename_component(room "${path}" DIRECTORY)
        install(FILES "${header}" DESTINATION "${VYR_INSTALL_INCLUDE_DIR}/${room}" COMPONENT development)
        set_property(GLOBAL APPEND PROPERTY VYR_INSTALLED_HEADERS "${path}")
    endforeach()
endfunction()

# add_host_library(NAME STATIC|SHARED
#     SOURCES file...          sources and headers, sorted
#     [PUBLIC target...]       what the library's headers need
#     [PRIVATE target...]      what only its sources need
#     [HEADERS file...]        headers for app authors, installed under their room
#     [NO_QT])                 the library knows nothing of Qt
#
# Rooms are included by their path from the top of the tree: <camera/StereoFrame.h>.
function(add_host_library name type)
    cmake_parse_arguments(PARSE_ARGV 2 arg "NO_QT" "" "SOURCES;PUBLIC;PRIVATE;HEADERS")
    add_library(${name} ${type} ${arg_SOURCES} ${arg_HEADERS})
    target_include_directories(${name} PUBLIC
        "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
        "$<INSTALL_INTERFACE:${VYR_INSTALL_INCLUDE_DIR}>")
    target_link_libraries(${name} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
    if(NOT arg_NO_QT)
        host_use_qt_generators(${name})
    endif()
    if(type STREQUAL "SHARED")
        host_runs_beside_program(${name})
        if(NOT VYR_SANITIZE) # whose run-time library comes with the program, not with each library
            target_link_options(${name} PRIVATE "LINKER:--no-undefined")
        endif()
        install(TARGETS ${name} EXPORT VYRDashboardTargets LIBRARY DESTINATION "${VYR_INSTALL_DIR}")
    endif()
    host_install_headers(${arg_HEADERS})
endfunction()

# The test programs that are worth running under the thread sanitizer.
add_custom_target(threaded_tests)

# add_host_test(NAME
#     SOURCES file...
#     [LIBRARIES target...]
#     [QT]            the test has Qt meta-objects and makes its own application object in main()
#     [SERIAL]        its cases share something (a folder, a socket): they run one at a time
#     [TIMEOUT s]     per case, 60 s unless said otherwise
#     [LABELS word...])   core, camera, simulator and plugins are also run under the thread sanitizer
#
# Every GoogleTest case is a ctest case, run without a display. The program gets a folder of its own, so that what it
# looks for beside its executable is what the test put there. Without QT, GoogleTest's own main() is linked.
function(add_host_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "QT;SERIAL" "TIMEOUT" "SOURCES;LIBRARIES;LABELS")
    add_executable(${name} ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/${name}.run")
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gmock)
    if(arg_QT)
        host_use_qt_generators(${name})
        target_link_libraries(${name} PRIVATE Qt5::Test)
    else()
        target_link_libraries(${name} PRIVATE GTest::gtest_main)
    endif()
    if("FakeVYR" IN_LIST arg_LIBRARIES)
        # Two camera libraries of one name, and CMake cannot know which is meant to be found first.
        set_target_properties(${name} PROPERTIES SKIP_BUILD_RPATH ON)
        target_link_options(${name} PRIVATE
            "LINKER:-rpath,$<TARGET_FILE_DIR:FakeVYR>:${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 60)
    endif()
    foreach(label IN ITEMS core camera simulator plugins)
        if(label IN_LIST arg_LABELS)
            add_dependencies(threaded_tests ${name})
        endif()
    endforeach()
    set(properties TIMEOUT ${arg_TIMEOUT} ENVIRONMENT QT_QPA_PLATFORM=offscreen)
    if(VYR_SANITIZE MATCHES "thread")
        list(APPEND properties ENVIRONMENT_MODIFICATION
            "TSAN_OPTIONS=set:suppressions=${PROJECT_SOURCE_DIR}/tests/thread-sanitizer.supp")
    endif()
    if(arg_LABELS)
        list(APPEND properties LABELS "${arg_LABELS}")
    endif()
    if(arg_SERIAL)
        list(APPEND properties RESOURCE_LOCK ${name})
    endif()
    gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
endfunction()

add_custom_target(benchmarks)

# add_host_benchmark(NAME
#     SOURCES file...
#     [LIBRARIES target...]
#     [QT]          the program has Qt meta-objects
#     [GOOGLE]      written with Google Benchmark, whose main() is linked
#     [UNLISTED])   not one of those that bench/run.sh runs
#
# A program that answers one question and prints its figures as bench/README.md says, or one that has to do with it.
function(add_host_benchmark name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "QT;GOOGLE;UNLISTED" "" "SOURCES;LIBRARIES")
    add_executable(${name} ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/${name}.run")
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES})
    if(arg_QT)
        host_use_qt_generators(${name})
    endif()
    add_dependencies(benchmarks ${name})
    set(kind own)
    if(arg_GOOGLE)
        target_link_libraries(${name} PRIVATE benchmark::benchmark_main)
        set(kind google)
    endif()
    if(NOT arg_UNLISTED)
        set_property(GLOBAL APPEND PROPERTY VYR_BENCHMARKS "${kind} $<TARGET_FILE:${name}>")
    endif()
endfunction()

# Writes the list of the benchmarks, for bench/run.sh: own or google, and the path of the program.
function(list_host_benchmarks)
    get_property(benchmarks GLOBAL PROPERTY VYR_BENCHMARKS)
    list(JOIN benchmarks "\n" lines)
    file(GENERATE OUTPUT "${CMAKE_BINARY_DIR}/benchmarks.txt" CONTENT "${lines}\n")
endfunction()
