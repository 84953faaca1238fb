#pragma once

#include "cleanup/duplicates/Candidates.h"

namespace swabby {

/// What tells which of two files was there first. The files of a described machine were all made by a script.
enum class FirstBy { birth, modification };

/// Whether a file's name says that it is a copy: "photo (1).jpg", "photo copy 2.jpg", "Copy of photo.jpg".
bool isNamedAsCopy(const std::string &name);

/// The same files with the one to keep in front: of those in the first folder the one that is not called a
/// copy, then the one that was there first, then the one of the shorter path. The others stay in their order.
/// Blocks for the disk.
CandidateSet withKeptFirst(const Candidates &candidates, CandidateSet set, FirstBy firstBy);

} // namespace swabby
