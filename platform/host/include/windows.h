// SPDX-License-Identifier: MIT
#pragma once

#include <winbase.h>
#include <windef.h>
#include <winerror.h>
#include <wingdi.h>
#include <winreg.h>
#include <winuser.h>
#include <winver.h>
