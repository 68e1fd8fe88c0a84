# DNs, paths and names, the configuration and policy, and the log forms.
zol_test(names_tests
    SOURCES
        ${PROJECT_SOURCE_DIR}/tests/common/inc/LogFormsTest.cpp
        RecordedExistenceTests.cpp
        common/ConfigurationFaults.cpp
        common/FileManagementConfigHandlerTest.cpp
        common/FileManagementConstrainsUtilTest.cpp
        common/FileManagementZoleaWrapperFailureTest.cpp
        common/FileManagementZoleaWrapperTest.cpp
        common/ShellFaults.cpp
        mo_impl/CheckDnTest.cpp
        mo_impl/ClassNamesTest.cpp
        mo_impl/DnConversionTest.cpp
        mo_impl/FileMRootTest.cpp
        mo_impl/LinksTest.cpp
        mo_impl/LiteralPathTest.cpp
        mo_impl/NameEncodingTest.cpp
        mo_impl/NameSearchTest.cpp
        mo_impl/NamingRulesTest.cpp
        mo_impl/RdnValueTest.cpp
    LIBRARIES zol::file_management_objects zol_test_support)
target_include_directories(names_tests PRIVATE .)
# Calls that a test sees or makes fail: RecordedExistenceTests.cpp, ConfigurationFaults.cpp and ShellFaults.cpp
# stand in for them.
target_link_options(names_tests PRIVATE
    LINKER:--wrap=popen
    LINKER:--wrap=pclose
    LINKER:--wrap=_ZNK4Poco4File6existsEv
    LINKER:--wrap=_ZN3Zol16ZolConfiguration8get_textB5cxx11EPN4Poco3XML7ElementE
    LINKER:--wrap=_ZN3Zol16ZolConfiguration20getElementsByTagNameENSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE)
