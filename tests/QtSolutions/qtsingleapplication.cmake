# SPDX-License-Identifier: Apache-2.0

get_target_property(imported QtSingleApplication IMPORTED)
if(NOT imported)
    add_executable(SingleApplicationProgram SingleApplicationProgram.cpp)
    set_target_properties(SingleApplicationProgram PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/SingleApplicationTest.run")
    target_link_libraries(SingleApplicationProgram PRIVATE QtSingleApplication)

    add_host_test(SingleApplicationTest QT
        SOURCES SingleApplicationTest.cpp
        LIBRARIES QtSingleApplication Qt5::Network)
    add_dependencies(SingleApplicationTest SingleApplicationProgram)

    add_host_test(InstanceLockTest QT
        SOURCES
            ${PROJECT_SOURCE_DIR}/tests/support/CoreApplicationMain.cpp
            InstanceLockTest.cpp
        LIBRARIES QtSingleApplication)
    # It stands in for one of these calls, which then has the same name as in the library.
    target_compile_definitions(InstanceLockTest PRIVATE ${VYR_LARGE_FILES})
endif()
