#pragma once
// Counting the GL calls of a paint. Linked into an executable, this
// library's GL entry points take the place of libGL's for the code linked into it,
// the graph module's included: each call is counted and nothing is drawn. Only
// for an executable that does no real GL work.
namespace glcount {

struct Counts {
    long long vertices = 0; // glVertex*, and those of glDrawArrays
    long long blocks = 0;   // glBegin (each ends in one glEnd), glDrawArrays
    long long ends = 0;     // glEnd, glDrawArrays
    long long calls = 0;    // every counted entry point
};

void reset();
Counts counts();

// The state GL would answer queries with: a host window's depth rule and an
// orthographic projection of data [left, right] x [bottom, top] onto the viewport
// (x, y, w, h) in window pixels. Until it is set, queries find no depth test.
void setWindow(double left, double right, double bottom, double top, int x, int y, int w, int h);

} // namespace glcount
