include(GoogleTest)

# A test program of GoogleTest: zol_test(NAME SOURCES... LIBRARIES...). Each TEST is a test of ctest.
function(zol_test name)
    cmake_parse_arguments(PARSE_ARGV 1 TEST "" "" "SOURCES;LIBRARIES")
    add_executable(${name} ${TEST_SOURCES})
    target_link_libraries(${name} PRIVATE ${TEST_LIBRARIES} zol_build_settings GTest::gmock GTest::gtest_main)
    zol_run_path(${name} "${ZOL_PROGRAM_RUN_PATH}")
    gtest_discover_tests(${name}
        TEST_PREFIX "${name}."
        NO_PRETTY_VALUES
        DISCOVERY_TIMEOUT 60
        PROPERTIES
            TIMEOUT 600
            ENVIRONMENT "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0")
endfunction()
