#pragma once
// Shared libraries here export everything by default (GCC); this header keeps one place to change that.
#define ZR_PLATFORM_EXPORT
