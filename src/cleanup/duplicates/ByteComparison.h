#pragma once

#include "cleanup/duplicates/Candidates.h"
#include "cleanup/duplicates/Reading.h"

namespace swabby {

/// So many files are read next to each other: with more, the pieces of each became small, and each worker
/// would hold too many files open.
constexpr std::size_t mostComparedAtOnce = 32;

/// Parts a few files of one size by their bytes: each set it gives holds two and more files that are equal
/// from end to end. What cannot be read or changes meanwhile is in none. No byte is read twice, and a file is
/// read no further than it takes to tell it from the others.
std::vector<CandidateSet> equalSetsOf(const Candidates &candidates, const CandidateSet &set,
                                      ReadBuffer &buffer, ReadMeter &meter);

} // namespace swabby
