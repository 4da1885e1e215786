// The XKB requests. Their C header names a field with a word that C++ keeps for itself.
#pragma once

#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit
