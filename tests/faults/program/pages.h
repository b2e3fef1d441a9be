#pragma once

namespace kiv::test {

// Pages of a small group, as text: two instruments on one page, the same on a page in two files, and one of them alone.

inline constexpr const char* duo =
    "staff 2 at 0 size 1 lines 5 instrument 101\ntimesignature 2 at 9 upper 3 lower 4\nnote 2 at 20 duration 3\n"
    "staff 1 at 0 size 1 lines 5 instrument 102\nclef 1 at 2 kind 1\nnote 1 at 20 duration 3\n"
    "barline 1 at 0 spans 2\nbarline 1 at 60 spans 1\nbarline 2 at 60 spans 1\n";
inline constexpr const char* upperHalf =
    "staff 1 at 0 size 1 lines 5 instrument 101\nnote 1 at 20 duration 3\nbarline 1 at 60 spans 1\n";
inline constexpr const char* lowerHalf =
    "staff 1 at 0 size 1 lines 5 instrument 102\nnote 1 at 20 duration 3\nbarline 1 at 0 spans 2\n"
    "barline 1 at 60 spans 1\n";
inline constexpr const char* solo =
    "staff 1 at 0 size 1 lines 5 instrument 102\nnote 1 at 15 duration 3\nbarline 1 at 0 spans 1\n"
    "barline 1 at 50 spans 1\n";

}  // namespace kiv::test
