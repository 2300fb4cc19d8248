// SPDX-License-Identifier: MIT
#pragma once

#include <windef.h>
#include <winerror.h>
#include <winbase.h>
#include <wingdi.h>
#include <winuser.h>
#include <winreg.h>
#include <winver.h>
