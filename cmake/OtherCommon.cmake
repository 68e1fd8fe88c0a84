# The framework's own companion library in the place of ours.
find_path(ZOL_OTHER_COMMON_HEADERS zol/common/ZolException.h
    PATHS "${ZOL_COMMON_ROOT}/include" NO_DEFAULT_PATH NO_CACHE REQUIRED)
find_library(ZOL_OTHER_COMMON_LIBRARY zol_common
    PATHS "${ZOL_COMMON_ROOT}/${CMAKE_INSTALL_LIBDIR}" "${ZOL_COMMON_ROOT}/lib" NO_DEFAULT_PATH NO_CACHE REQUIRED)
add_library(zol::common SHARED IMPORTED GLOBAL)
set_target_properties(zol::common PROPERTIES
    IMPORTED_LOCATION "${ZOL_OTHER_COMMON_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${ZOL_OTHER_COMMON_HEADERS}"
    INTERFACE_LINK_LIBRARIES "zol::spi;Poco::XML")
