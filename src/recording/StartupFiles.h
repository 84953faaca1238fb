#pragma once

#include "recording/FolderWriter.h"
#include "recording/Heard.h"
#include "recording/ToolTexts.h"

namespace swabby {

/// What starts by itself as launch agents and daemons, those that are turned off too, and what a Mac's tools
/// would say of them. A program that is there becomes an empty file.
void addStartupFiles(const Heard &heard, Machine &machine, Rewriting &rewriting, FolderWriter &folder,
                     ToolTexts &texts);

} // namespace swabby
