#pragma once

#include "Platform.h"
