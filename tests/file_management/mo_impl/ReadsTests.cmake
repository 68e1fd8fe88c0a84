zol_test(reads_tests
    SOURCES
        AttributeReadTest.cpp
        AttributeValuesTest.cpp
        AttributesReadTest.cpp
        ChildCountTest.cpp
        ChildIterationTest.cpp
        Faults.cpp
        FileConfigIteratorTest.cpp
        FileGroupIteratorChangesTest.cpp
        FileGroupIteratorFailuresTest.cpp
        FileGroupIteratorKindsTest.cpp
        FileGroupIteratorLinksTest.cpp
        FileGroupIteratorTest.cpp
        FileListingTest.cpp
        FileTimeTest.cpp
        FilesInSubtreeTest.cpp
        ObjectExistenceTest.cpp
        PolicyReservationTest.cpp
        ProcessState.cpp
        ReadsFixture.cpp
        ResultRecordsTest.cpp
        SpecialFiles.cpp
        WalkFixture.cpp
        ${PROJECT_SOURCE_DIR}/tests/common/inc/MoAccessorReadsTest.cpp
    LIBRARIES zol_test_support zol::file_management_objects)
# Calls that a test can make fail; Faults.cpp stands in for them.
target_link_options(reads_tests PRIVATE
    LINKER:--wrap=calloc
    LINKER:--wrap=lstat64
    LINKER:--wrap=popen
    LINKER:--wrap=readlink
    LINKER:--wrap=stat64
    LINKER:--wrap=strdup
    LINKER:--wrap=_Znwm
    LINKER:--wrap=_ZNK4Poco4File7getSizeEv
    LINKER:--wrap=_ZN3Zol6DnUtil8getClassERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE)
