#pragma once

/// @file
/// All value classes and the framework types that their interface uses.

#include "nkdt/DialogExchange.h"
#include "nkdt/DialogFields.h"
#include "nkdt/NkDtBasis.h"
#include "nkdt/NkDtBool.h"
#include "nkdt/NkDtChar.h"
#include "nkdt/NkDtDateTime.h"
#include "nkdt/NkDtDateZp.h"
#include "nkdt/NkDtDecimal.h"
#include "nkdt/NkDtDouble.h"
#include "nkdt/NkDtExcep.h"
#include "nkdt/NkDtLong.h"
#include "nkdt/NkDtShort.h"
#include "nkdt/NkDtString.h"
#include "nkdt/NkDtTime.h"
#include "nkdt/NkDtTypes.h"
#include "nkdt/NkDtUtil.h"
#include "nkfo/NkFormat.h"
#include "nkfw/Framework.h"
