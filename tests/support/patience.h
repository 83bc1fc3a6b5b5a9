#pragma once
// How long a test waits for the window system or a timer-driven change. A loaded
// machine (the sanitizer build beside another suite) can take many seconds to map
// or activate a window; a wait ends as soon as its condition holds, so a long limit
// costs nothing when all is well.
constexpr int patienceMs = 60000;
