#pragma once

#include "engine/BrowserRollupEntry.h"
#include "platform/mactools/LaunchdText.h"
#include "recording/Heard.h"
#include "recording/ToolTexts.h"

namespace swabby {

// What a Mac's tools print, written from Swabby's own records for what no tool was asked about.

std::string jobText(const LoadedJob &job);
std::string signatureText(bool isTheVendors);

/// The lists of processes, what they draw and move, the browsers as they were counted, when machine and
/// programs started, and the battery.
void addMissingTexts(const Heard &heard, const QList<BrowserRollupEntry> &browsers, Rewriting &rewriting,
                     ToolTexts &texts);

} // namespace swabby
