// SPDX-License-Identifier: MIT
#pragma once

/// The keyboard extension's <xcb/xkb.h> for C++: the C in it has members named explicit.

// Compilers warn of a macro that hides a keyword, but not in headers of the system.
#pragma GCC system_header
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
