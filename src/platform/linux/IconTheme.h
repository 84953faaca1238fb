#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace swabby {

/// What the index of an icon theme says of the folders that may hold icons of programs.
struct IconTheme {
    struct Directory {
        std::string path; ///< below the theme's folder
        int smallest = 0; ///< pixels its pictures are made for
        int largest = 0;
        bool isScalable = false;
    };

    std::vector<Directory> directories;
    std::vector<std::string> parents; ///< names of the themes it builds on, as they stand
};

/// From the text of an index.theme; nothing for any other text.
IconTheme iconThemeFrom(std::string_view index);

} // namespace swabby
