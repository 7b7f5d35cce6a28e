#pragma once

// Lists of entries for the calendar pages, their order, marking an entry done and moving it.

#include "Entry_Lists.h"
#include "Entry_Order.h"
#include "Entry_Rows.h"
#include "Marking.h"
#include "Moving.h"
