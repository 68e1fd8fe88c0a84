# What waits in a transaction, how it gets there and what commit makes of it.
zol_test(changes_tests
    SOURCES
        ${PROJECT_SOURCE_DIR}/tests/common/inc/AutoMemoryTest.cpp
        AbortTest.cpp
        ActionTest.cpp
        ChangesFixture.cpp
        CommitFailureTest.cpp
        CommitTest.cpp
        CreateTest.cpp
        DeleteTest.cpp
        ForeignExceptionTest.cpp
        NewDirectoriesTest.cpp
        NonComittedDataTest.cpp
        OperatorMessagesTest.cpp
        OwnerAndGroupTest.cpp
        PathCompareTest.cpp
        PathSetTest.cpp
        ProcessState.cpp
        RemoveFileTest.cpp
        RemoveTest.cpp
        SystemFaults.cpp
        TransactionLifeTest.cpp
    LIBRARIES zol::file_management_objects zol_test_support)
target_link_options(changes_tests PRIVATE # for SystemFaults
    LINKER:--wrap=mkdirat,--wrap=fchmodat,--wrap=chown,--wrap=fstatat64,--wrap=free
    LINKER:--wrap=_ZN4Poco4File15createDirectoryEv
    LINKER:--wrap=_ZN17ZolFileManagement10removeTreeERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE)
