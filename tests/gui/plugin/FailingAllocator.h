#pragma once
// Allocations that may fail, and do when a test wants it.

//! Counts down at each allocation that may fail, which fails at 0; 0 from the start lets all
//! through.
extern int g_failAt;
