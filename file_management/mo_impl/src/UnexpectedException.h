#pragma once

#include "LogForms.h"

#include <exception>

/// What every guarded block writes about an exception that its rules don't name. A macro, so that the trace
/// tells the place of the block.
#define ZOL_TRACE_UNEXPECTED_EXCEPTION(FAILURE)                                                              \
    ZOL_PLAIN_TRACE("Unexpected exception :%s", static_cast<const std::exception&>(FAILURE).what())
