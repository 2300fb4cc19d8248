// SPDX-License-Identifier: MIT
#include "differences.h"

bool test::IsHandheld() { return true; }
