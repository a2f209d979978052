#pragma once

/// Of the manual that zav html writes: manual.css and manual.js.
extern const char* const MANUAL_STYLE;
extern const char* const MANUAL_SCRIPT;
