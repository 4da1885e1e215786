// A session of 51 frames of 2880x1800: what each join takes, beside a stitcher that makes a new picture with
// every one, and the most memory that is held at once. Prints a table.
#pragma once

namespace marrowfin::bench {

void printJoinTable();

} // namespace marrowfin::bench
