#pragma once
// The host's frame range, selected range, cursor and rate.
#include "utils/saturate.h"

#include <algorithm>
#include <cstdint>

// A range [a, b) of frames is valid when it starts at 0 or later and is not empty.
inline bool isValidRange(int a, int b) { return a >= 0 && a < b; }

struct FramesInfo {
    int64_t start;   // first frame number of the data
    int64_t finish;  // end frame number of the data (one past the last)
    int64_t head;    // first frame of the selected range
    int64_t tail;    // end frame of the selected range
    int64_t current; // cursor frame
    float freq;      // frames per second
    bool loop = false;

    FramesInfo(int64_t start = 0, int64_t finish = 0, int64_t head = 0, int64_t tail = 0, int64_t current = 0,
               float freq = 0)
        : start(start), finish(finish), head(head), tail(tail), current(current), freq(freq)
    {
    }

    // Saturates for ranges wider than 64 bits can count: the host sends them unchecked.
    int64_t size() const { return sub64(finish, start); }

    // New data range: the selected range becomes the whole range and the cursor its first frame.
    void Reset(int64_t s, int64_t f, float rate)
    {
        start = head = current = s;
        finish = tail = f;
        freq = rate;
    }
    // New data range that keeps the selected range and cursor inside it.
    void Size(int64_t s, int64_t f)
    {
        start = s;
        finish = f;
        Region(head, tail);
        Seek(current, 0);
    }
    // New selected range, clipped to the data range.
    void Region(int64_t h, int64_t t)
    {
        head = std::clamp(h, start, std::max(start, finish));
        tail = std::clamp(t, head, std::max(start, finish));
    }
    // Moves the cursor by n frames inside the selected range (the whole range when
    // none), wrapping when loop is set and stopping at the ends otherwise.
    void Step(int64_t n)
    {
        const int64_t a = head < tail ? head : start, b = head < tail ? tail : finish;
        if (b <= a)
            return;
        if (loop) {
            // In 128 bits: the range and the step may each span all of int64.
            const __int128 span = __int128(b) - a;
            current = int64_t(a + ((__int128(current) - a + n) % span + span) % span);
            return;
        }
        current = std::clamp(add64(current, n), a, b - 1);
    }
    // Puts the cursor at frame + offset, inside the data range.
    void Seek(int64_t frame, int64_t offset)
    {
        current = finish > start ? std::clamp(add64(frame, offset), start, finish - 1) : start;
    }

    bool operator==(const FramesInfo& o) const
    {
        return start == o.start && finish == o.finish && head == o.head && tail == o.tail &&
               current == o.current && freq == o.freq && loop == o.loop;
    }
    bool operator!=(const FramesInfo& o) const { return !(*this == o); }
};
