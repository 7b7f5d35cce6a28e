#pragma once

// Lists of entries for the calendar pages, their order, and marking an entry done.

#include "Entry_Lists.h"
#include "Entry_Order.h"
#include "Entry_Rows.h"
#include "Marking.h"
