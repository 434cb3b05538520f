#include "core/sheet_grid.h"
