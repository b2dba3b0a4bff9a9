#pragma once

namespace host {

// A straight segment of the host's geometry, from start to end.
struct Segment {
    double x1 = 0, y1 = 0, z1 = 0;
    double x2 = 0, y2 = 0, z2 = 0;

    friend bool operator==(const Segment&, const Segment&) = default;
};

} // namespace host
