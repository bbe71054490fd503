#include "StoreClock.h"
