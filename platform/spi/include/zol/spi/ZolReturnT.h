/** @file
 * Result of every operation that crosses between a host and a component. */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/** 0 is success. Which other codes an operation gives stands at that operation. */
typedef int ZolReturnT;

/** The codes in use. A host's own functions may give others, which a component passes on. */
enum ZolReturnCode
{
    ZolReturnOk = 0,               /**< done */
    ZolReturnFailure = -1,         /**< the operation failed or was refused */
    ZolReturnNoSuch = -2,          /**< no such object, attribute, action, transaction or iterator */
    ZolReturnWrongParameters = -8, /**< the parameters of an action have a wrong type or number */
};

#ifdef __cplusplus
}
#endif
