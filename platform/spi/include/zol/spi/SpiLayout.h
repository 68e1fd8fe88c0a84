/** @file
 * Layouts are a contract between separately built libraries, so they are checked where they are declared. */
#pragma once

#include <stddef.h>

/** Fails the compilation with TEXT unless HOLDS. No header of a C library is needed, so that a target can be
 * checked for which there is only a compiler. */
#ifdef __cplusplus
#define ZOL_SPI_ASSERT(HOLDS, TEXT) static_assert(HOLDS, TEXT)
#else
#define ZOL_SPI_ASSERT(HOLDS, TEXT) _Static_assert(HOLDS, TEXT)
#endif

/** FIELD is word number INDEX of RECORD, all words before it having the size of a pointer. */
#define ZOL_SPI_ASSERT_WORD(RECORD, FIELD, INDEX)                                                            \
    ZOL_SPI_ASSERT(offsetof(RECORD, FIELD) == (INDEX) * sizeof(void*),                                       \
                   #RECORD "::" #FIELD " binds with the host")

/** RECORD takes so many BYTES. */
#define ZOL_SPI_ASSERT_SIZE(RECORD, BYTES)                                                                   \
    ZOL_SPI_ASSERT(sizeof(RECORD) == (BYTES), "the size of " #RECORD " binds with the host")

/** Behind the name of an enumeration of which a host may know more values than are named: in C++ it must then
 * be able to hold every int, as it is in C. */
#ifdef __cplusplus
#define ZOL_SPI_OPEN_ENUM : int
#else
#define ZOL_SPI_OPEN_ENUM
#endif
