/* Layouts are a contract between separately built libraries, so they are checked where they are declared. */
#pragma once

#include <assert.h>
#include <stddef.h>

/* FIELD is word number INDEX of RECORD, all words before it having the size of a pointer. */
#define ZOL_SPI_ASSERT_WORD(RECORD, FIELD, INDEX)                                                            \
    static_assert(offsetof(RECORD, FIELD) == (INDEX) * sizeof(void*),                                        \
                  #RECORD "::" #FIELD " binds with the host")

#define ZOL_SPI_ASSERT_SIZE(RECORD, BYTES)                                                                   \
    static_assert(sizeof(RECORD) == (BYTES), "the size of " #RECORD " binds with the host")

/* Behind the name of an enumeration of which a host may know more values than are named: in C++ it must then
 * be able to hold every int, as it is in C. */
#ifdef __cplusplus
#define ZOL_SPI_OPEN_ENUM : int
#else
#define ZOL_SPI_OPEN_ENUM
#endif
