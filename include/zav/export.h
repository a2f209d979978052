#pragma once

/// @file

/// Marks what the shared library exports; everything else in it is hidden.
#define ZAV_EXPORT __attribute__((visibility("default")))
