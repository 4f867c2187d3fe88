#pragma once

/// @file
/// All of the framework.

#include "nkfw/Archive.h"
#include "nkfw/BStr.h"
#include "nkfw/Calendar.h"
#include "nkfw/Clock.h"
#include "nkfw/Cp1252.h"
#include "nkfw/Currency.h"
#include "nkfw/DataExchange.h"
#include "nkfw/DialogWnd.h"
#include "nkfw/Exception.h"
#include "nkfw/File.h"
#include "nkfw/Memory.h"
#include "nkfw/MemoryDialog.h"
#include "nkfw/Module.h"
#include "nkfw/Object.h"
#include "nkfw/OleDateTime.h"
#include "nkfw/Recordset.h"
#include "nkfw/String.h"
#include "nkfw/Types.h"
#include "nkfw/Wnd.h"
