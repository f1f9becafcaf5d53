/* The whole host API. */
#ifndef FMX_FMX_H
#define FMX_FMX_H

#include "fmx/types.h"
#include "fmx/text.h"
#include "fmx/data.h"
#include "fmx/binary.h"
#include "fmx/exprenv.h"
#include "fmx/callblock.h"

#endif
