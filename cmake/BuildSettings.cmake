set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(ZOL_SANITIZERS "" CACHE STRING "Sanitizers to build with, as -fsanitize takes them")
option(ZOL_WARNINGS_STOP "Warnings stop the build; OFF for packages, whose compilers may know more of them" ON)
option(ZOL_COVERAGE "Count executed lines and branches" OFF)

# What every target of this project is compiled with.
add_library(zol_build_settings INTERFACE)
target_compile_features(zol_build_settings INTERFACE cxx_std_20 c_std_11)
target_compile_options(zol_build_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${ZOL_WARNINGS_STOP}>:-Werror>
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual>
    # GCC 12 sees overlapping copies in std::string when it optimises
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<NOT:$<CONFIG:Debug>>>:-Wno-restrict>)

if(ZOL_SANITIZERS)
    target_compile_options(zol_build_settings INTERFACE
        -fsanitize=${ZOL_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer
        # GCC 12 sees uninitialised objects in <regex> when it instruments
        $<$<AND:$<COMPILE_LANGUAGE:CXX>,$<CXX_COMPILER_ID:GNU>>:-Wno-maybe-uninitialized>)
    target_link_options(zol_build_settings INTERFACE -fsanitize=${ZOL_SANITIZERS})
endif()

# A shared library names all that it needs. Clang's sanitizers are in the program alone.
if(ZOL_SANITIZERS AND CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    set(ZOL_NO_UNDEFINED "")
else()
    set(ZOL_NO_UNDEFINED LINKER:-z,defs)
endif()

if(ZOL_COVERAGE)
    # Tests are in the libraries with several threads, which lose counts of each other otherwise.
    target_compile_options(zol_build_settings INTERFACE
        --coverage $<$<NOT:$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>>:-fprofile-update=atomic>)
    target_link_options(zol_build_settings INTERFACE --coverage)
else()
    # No path of the building machine in traces, assertions or debug information. The reports of coverage need it.
    # A cache of the compiler may ask for sources by their way from the build folder.
    file(RELATIVE_PATH ZOL_WAY_TO_SOURCES ${PROJECT_BINARY_DIR} ${PROJECT_SOURCE_DIR})
    target_compile_options(zol_build_settings INTERFACE
        -ffile-prefix-map=${PROJECT_SOURCE_DIR}/= -ffile-prefix-map=${ZOL_WAY_TO_SOURCES}=)
endif()
