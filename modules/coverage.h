#pragma once
// The pixels of a view that a fast paint's tracks have certainly written, so that a
// primitive which can add none is not sent. Every track primitive is drawn at the
// same depth with GL_LESS: the first fragment to reach a pixel keeps it and every
// later one is discarded, whatever its colour. Dropping a primitive whose possible
// pixels are all certain therefore changes no pixel.
#include <cstdint>
#include <vector>

// Window position of a data point at the tracks' depth: an affine map, in pixels.
struct WindowMap {
    double ax = 0, bx = 0, cx = 0; // x = ax * dataX + bx * dataY + cx
    double ay = 0, by = 0, cy = 0; // y = ay * dataX + by * dataY + cy

    bool operator==(const WindowMap& o) const
    {
        return ax == o.ax && bx == o.bx && cx == o.cx && ay == o.ay && by == o.by && cy == o.cy;
    }
};

// The view's pixel rectangle, in window pixels.
struct PixelRect {
    int x = 0, y = 0, w = 0, h = 0;

    bool operator==(const PixelRect& o) const { return x == o.x && y == o.y && w == o.w && h == o.h; }
};

class Coverage {
public:
    // margin: how far the driver's float transform and sub-pixel snapping may move
    // a vertex from where doubles put it, in pixels. An edge within it of a pixel
    // centre makes that pixel possible but not certain.
    Coverage(const WindowMap& map, const PixelRect& view, double margin);

    // A point of `size` pixels at data (x, y): false when it certainly adds no pixel
    // (all it could write is certain, or its centre is certainly clipped); otherwise
    // true, and the pixels it certainly writes become certain.
    bool point(double x, double y, int size);
    // A one-pixel segment: false when every pixel it could write is certain;
    // otherwise true, and the pixels it certainly writes become certain.
    bool segment(double x0, double y0, double x1, double y1);
    // Whether every pixel that any one-pixel segment inside the data box
    // [x0, x1] x [y0, y1] could write is certain: such segments can all be dropped.
    bool segmentsCovered(double x0, double x1, double y0, double y1) const;
    // Whether a point of `size` pixels anywhere in the data box [x0, x1] x [y0, y1]
    // certainly adds no pixel: such points can all be dropped.
    bool pointsCovered(double x0, double x1, double y0, double y1, int size) const;

    // Queries on window pixels, for tests.
    bool certain(int px, int py) const;
    double margin() const { return m; }
    const WindowMap& windowMap() const { return map; }
    const PixelRect& pixels() const { return view; }

private:
    WindowMap map;
    PixelRect view;
    double m;
    int x0, y0, w, h;             // the bitmap: the view widened by a few pixels, where
                                  // big points near the edges still write
    int words;                    // 64-bit words per column: zoomed out, what is asked
                                  // about is narrow and tall, a word or two per column
    std::vector<uint64_t> bits;
    bool aligned;                 // data x maps to window x and data y to window y

    // Boxes lately found all certain. Pixels only ever become certain, so a box
    // inside one of them is too; zoomed out, one sample after another asks about
    // the same few pixels.
    struct Box {
        int i0 = 1, i1 = 0, j0 = 1, j1 = 0;
    };
    mutable Box recent[4];
    mutable int nextRecent = 0;

    bool allCertain(int i0, int i1, int j0, int j1) const;
    bool bitsCertain(int i0, int i1, int j0, int j1) const;
    bool boxCovered(double x0, double x1, double y0, double y1, double reach) const;
    void mark(int i0, int i1, int j0, int j1);
    void markPixel(int i, int j);
    bool centreInside(double wx, double wy) const;
};

// The margin of one paint: the driver's snapping to its sub-pixel grid (GL's
// GL_SUBPIXEL_BITS, at least 4) plus the float rounding of a transform whose terms
// reach `magnitude` window pixels.
double coverageMargin(double magnitude, int subpixelBits);
