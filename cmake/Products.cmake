# What is installed can be moved, so its parts know each other's places from their own.
foreach(folder IN ITEMS BINDIR LIBDIR INCLUDEDIR DATAROOTDIR)
    if(IS_ABSOLUTE "${CMAKE_INSTALL_${folder}}")
        message(FATAL_ERROR "CMAKE_INSTALL_${folder} is not relative to the prefix: ${CMAKE_INSTALL_${folder}}")
    endif()
endforeach()
file(RELATIVE_PATH ZOL_FROM_PROGRAMS_TO_LIBRARIES "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")

# A build folder holds products at the places where a prefix has them.
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_BINDIR}")

set(ZOL_LIBRARY_RUN_PATH "$ORIGIN")
set(ZOL_PROGRAM_RUN_PATH "$ORIGIN/${ZOL_FROM_PROGRAMS_TO_LIBRARIES}")

# The run path of a product is the same in the build folder and where it is installed. A system that has the
# libraries where the loader looks anyway wants none: CMAKE_SKIP_INSTALL_RPATH.
function(zol_run_path target path)
    if(CMAKE_SKIP_INSTALL_RPATH)
        set_target_properties(${target} PROPERTIES BUILD_RPATH_USE_ORIGIN ON BUILD_RPATH "${path}")
    else()
        set_target_properties(${target} PROPERTIES BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "${path}")
    endif()
endfunction()

# What others are linked with or load by its name goes by the number of its binary interface.
function(zol_versioned target)
    set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
endfunction()
