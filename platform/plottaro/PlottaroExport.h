#pragma once
// The library exports everything by default (GCC); this header keeps one place to change that.
#define PLOTTARO_EXPORT
