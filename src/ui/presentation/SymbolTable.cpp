#include "ui/presentation/SymbolTable.h"

#include <algorithm>
#include <iterator>

namespace swabby {
namespace {

constexpr const char *checkedSeal =
    "M12 2.6 L14.5 4.5 L17.6 4.3 L18.6 7.3 L21.3 8.9 L20.4 12 L21.3 15.1 L18.6 16.7 L17.6 19.7 L14.5 19.5 "
    "L12 21.4 L9.5 19.5 L6.4 19.7 L5.4 16.7 L2.7 15.1 L3.6 12 L2.7 8.9 L5.4 7.3 L6.4 4.3 L9.5 4.5 Z "
    "M8.4 12.2 L11 14.7 L15.7 9.5";
constexpr const char *battery =
    "M4.5 7 H17 A2.5 2.5 0 0 1 19.5 9.5 V14.5 A2.5 2.5 0 0 1 17 17 H4.5 A2.5 2.5 0 0 1 2 14.5 V9.5 "
    "A2.5 2.5 0 0 1 4.5 7 Z M22.2 10.6 V13.4";
constexpr const char *star =
    "M12 2.9 L14.75 8.6 L21 9.45 L16.45 13.8 L17.6 20.05 L12 17.05 L6.4 20.05 L7.55 13.8 L3 9.45 L9.25 8.6 Z";
constexpr const char *fullCircle = "M12 2 A10 10 0 0 1 12 22 A10 10 0 0 1 12 2 Z";
constexpr const char *shield =
    "M12 3 L19 5.4 V11.4 C19 15.8 16.2 19.3 12 21.2 C7.8 19.3 5 15.8 5 11.4 V5.4 Z";

// In the order of their names.
constexpr SymbolDrawing drawings[] = {
    {"arrow.clockwise", "M19.4 9.2 A8 8 0 1 0 20 12 M19.8 4.2 V9.4 H14.6"},
    {"arrow.up", "M12 19.4 V5 M5.8 11 L12 4.8 L18.2 11"},
    {"arrow.uturn.backward", "M8.4 5 L4 9.4 L8.4 13.8 M4.4 9.4 H14.6 A5.2 5.2 0 0 1 14.6 19.8 H9"},
    {"battery.100.bolt", battery, "M11.9 5.2 L6.6 12.9 H10.1 L9.2 18.8 L14.9 11 H11.2 Z"},
    {"battery.75", battery, "M5.4 9.4 H13 V14.6 H5.4 A0.9 0.9 0 0 1 4.5 13.7 V10.3 A0.9 0.9 0 0 1 5.4 9.4 Z"},
    {"bell", "M6.2 16.6 V11 A5.8 5.8 0 0 1 17.8 11 V16.6 L19.4 18.4 H4.6 Z M10 21 H14"},
    {"checkmark", "M5 12.8 L9.8 17.4 L19 7.2"},
    {"checkmark.circle.fill", "", fullCircle, "M7.6 12.4 L10.7 15.4 L16.4 8.9"},
    {"checkmark.seal", checkedSeal},
    {"chevron.down", "M5.5 9 L12 15.4 L18.5 9"},
    {"chevron.right", "M8.8 5.5 L15.2 12 L8.8 18.5"},
    {"chevron.up", "M5.5 15.2 L12 8.8 L18.5 15.2"},
    {"circle", "M12 3 A9 9 0 0 1 12 21 A9 9 0 0 1 12 3 Z"},
    {"clock", "M12 3 A9 9 0 0 1 12 21 A9 9 0 0 1 12 3 Z M12 7.4 V12.2 L15.4 14.2"},
    {"doc.on.doc", "M9.8 8.6 H18.6 A1.6 1.6 0 0 1 20.2 10.2 V19 A1.6 1.6 0 0 1 18.6 20.6 H9.8 A1.6 1.6 0 0 1 "
                   "8.2 19 V10.2 A1.6 1.6 0 0 1 9.8 8.6 Z M8 15.4 H5.4 A1.6 1.6 0 0 1 3.8 13.8 V5 A1.6 1.6 0 "
                   "0 1 5.4 3.4 H14.2 A1.6 1.6 0 0 1 15.8 5 V8.4"},
    {"ellipsis", "",
     "M5 10.3 A1.7 1.7 0 0 1 5 13.7 A1.7 1.7 0 0 1 5 10.3 Z M12 10.3 A1.7 1.7 0 0 1 12 13.7 A1.7 1.7 0 0 1 "
     "12 10.3 Z "
     "M19 10.3 A1.7 1.7 0 0 1 19 13.7 A1.7 1.7 0 0 1 19 10.3 Z"},
    {"exclamationmark.circle.fill", "", fullCircle, "M12 6.8 V13.2 M12 17 V17.1"},
    {"exclamationmark.triangle.fill", "",
     "M10.1 3.9 L2 18 A2.2 2.2 0 0 0 3.9 21.3 H20.1 A2.2 2.2 0 0 0 22 18 L13.9 3.9 A2.2 2.2 0 0 0 10.1 3.9 Z",
     "M12 9 V13.6 M12 17.2 V17.3"},
    {"folder", "M4.8 5.2 H9.2 L11.4 7.8 H19.2 A1.8 1.8 0 0 1 21 9.6 V17.4 A1.8 1.8 0 0 1 19.2 19.2 H4.8 A1.8 "
               "1.8 0 0 1 3 17.4 V7 A1.8 1.8 0 0 1 4.8 5.2 Z"},
    {"gauge.with.dots.needle.67percent", "M6.3 19.2 A9.2 9.2 0 1 1 17.7 19.2 M12.9 12.9 L16 8.4 M12 12.2 "
                                         "A1.7 1.7 0 1 1 12 15.6 A1.7 1.7 0 1 1 12 "
                                         "12.2 Z"},
    {"gearshape",
     "M12 8.6 A3.4 3.4 0 0 1 12 15.4 A3.4 3.4 0 0 1 12 8.6 Z M12 2.8 V5.4 M12 18.6 V21.2 M2.8 12 H5.4 M18.6 "
     "12 H21.2 M5.5 5.5 L7.3 7.3 M16.7 16.7 L18.5 18.5 M5.5 18.5 L7.3 16.7 M16.7 7.3 L18.5 5.5"},
    {"globe",
     "M12 3 A9 9 0 0 1 12 21 A9 9 0 0 1 12 3 Z M3.2 12 H20.8 M12 3 C8 7.6 8 16.4 12 21 M12 3 C16 7.6 16 "
     "16.4 12 21"},
    {"hammer",
     "M13.4 9.2 L5 17.6 A1.75 1.75 0 0 0 7.5 20.1 L15.9 11.7 M10.2 5.6 L13.2 2.9 L20.8 10.5 L18.2 13.1 "
     "L15.9 10.8 L14.3 12.4 L11.4 9.5 L12.6 8 Z"},
    {"info.circle", "M12 3 A9 9 0 0 1 12 21 A9 9 0 0 1 12 3 Z M12 11.4 V16.2 M12 7.8 V7.9"},
    {"internaldrive",
     "M3 14.5 L6 5.8 A1.9 1.9 0 0 1 7.8 4.5 H16.2 A1.9 1.9 0 0 1 18 5.8 L21 14.5 M5 13.2 H19 A2 2 0 0 "
     "1 21 15.2 V17.5 A2 2 0 0 1 19 19.5 H5 A2 2 0 0 1 3 17.5 V15.2 A2 2 0 0 1 5 13.2 Z M16.8 16.3 "
     "V16.4"},
    {"key", "M15.4 3.6 A5 5 0 0 1 15.4 13.6 A5 5 0 0 1 15.4 3.6 Z M11.8 12.2 L3.8 20.2 M6.2 17.8 L8.6 20.2 "
            "M9 15 L11 17"},
    {"memorychip",
     "M7 5 H17 A2 2 0 0 1 19 7 V17 A2 2 0 0 1 17 19 H7 A2 2 0 0 1 5 17 V7 A2 2 0 0 1 7 5 Z M9.5 9.5 "
     "H14.5 V14.5 H9.5 Z M9 2.4 V5 M15 2.4 V5 M9 19 V21.6 M15 19 V21.6 M2.4 9 H5 M2.4 15 H5 M19 9 "
     "H21.6 M19 15 H21.6"},
    {"minus", "M5 11.8 H19 V12.2 H5"},
    {"pin", "M12 14.2 V21.2 M8.2 2.8 H15.8 L14.9 5 V9.6 L18 14.2 H6 L9.1 9.6 V5 Z"},
    {"pin.fill", "M12 14.2 V21.2 M6.4 14.2 H17.6", "M8.2 2.8 H15.8 L14.9 5 V9.6 L18 14.2 H6 L9.1 9.6 V5 Z"},
    {"power", "M12 3.2 V11.6 M7.3 5.9 A8.3 8.3 0 1 0 16.7 5.9"},
    {"questionmark.circle", "M12 3 A9 9 0 0 1 12 21 A9 9 0 0 1 12 3 Z M9.4 9.6 A2.6 2.6 0 1 1 12.9 12 C12.2 "
                            "12.3 12 12.8 12 13.6 M12 16.6 V16.7"},
    {"shield.lefthalf.filled", shield, "M12 3 L5 5.4 V11.4 C5 15.8 7.8 19.3 12 21.2 Z"},
    {"shippingbox",
     "M12 3 L20 7.2 V16.8 L12 21 L4 16.8 V7.2 Z M4.2 7.4 L12 11.6 L19.8 7.4 M12 11.6 V20.8 M8 5.2 L15.9 9.4"},
    {"slider.horizontal.3",
     "M4 6.5 H13 M17.4 6.5 H20 M15.2 4.3 A2.2 2.2 0 0 1 15.2 8.7 A2.2 2.2 0 0 1 15.2 4.3 Z M4 12 H6.6 M11 12 "
     "H20 M8.8 9.8 A2.2 2.2 0 0 1 8.8 14.2 A2.2 2.2 0 0 1 8.8 9.8 Z M4 17.5 H13 M17.4 17.5 H20 M15.2 15.3 "
     "A2.2 2.2 0 0 1 15.2 19.7 A2.2 2.2 0 0 1 15.2 15.3 Z"},
    {"sparkles", "M11 4.4 L12.9 9.4 L17.8 11.2 L12.9 13.1 L11 18 L9.1 13.1 L4.2 11.2 L9.1 9.4 Z M18.2 2.8 "
                 "V6.4 M16.4 4.6 H20 M18.6 16.8 V20.8 M16.6 18.8 H20.6"},
    {"square.grid.2x2",
     "M5 3.8 H9 A1.2 1.2 0 0 1 10.2 5 V9 A1.2 1.2 0 0 1 9 10.2 H5 A1.2 1.2 0 0 1 3.8 9 V5 A1.2 1.2 "
     "0 0 1 5 3.8 Z M15 3.8 H19 A1.2 1.2 0 0 1 20.2 5 V9 A1.2 1.2 0 0 1 19 10.2 H15 A1.2 1.2 0 "
     "0 1 13.8 9 V5 A1.2 1.2 0 0 1 15 3.8 Z M5 13.8 H9 A1.2 1.2 0 0 1 10.2 15 V19 A1.2 1.2 0 0 1 "
     "9 20.2 H5 A1.2 1.2 0 0 1 3.8 19 V15 A1.2 1.2 0 0 1 5 13.8 Z M15 13.8 H19 A1.2 1.2 0 0 1 "
     "20.2 15 V19 A1.2 1.2 0 0 1 19 20.2 H15 A1.2 1.2 0 0 1 13.8 19 V15 A1.2 1.2 0 0 1 15 13.8 "
     "Z"},
    {"star", star},
    {"star.fill", star, star},
    {"swabby", "M18 8 C16 3 5.6 4.2 6.2 9 C6.8 13.2 18 10.8 18 15.5 C18 21 7.4 21 5.6 16"},
    {"trash",
     "M4 6.6 H20 M9 6.4 V4.6 A1.2 1.2 0 0 1 10.2 3.4 H13.8 A1.2 1.2 0 0 1 15 4.6 V6.4 M6 6.8 L6.9 19 A1.7 "
     "1.7 0 0 0 8.6 20.6 H15.4 A1.7 1.7 0 0 0 17.1 19 L18 6.8 M10 10.4 V16.8 M14 10.4 V16.8"},
    {"wifi",
     "M2.8 9.6 A13 13 0 0 1 21.2 9.6 M6 13 A8.5 8.5 0 0 1 18 13 M9.1 16.3 A4.1 4.1 0 0 1 14.9 16.3 M12 19.6 "
     "V19.7"},
    {"xmark", "M5.5 5.5 L18.5 18.5 M18.5 5.5 L5.5 18.5"},
};

} // namespace

const SymbolDrawing *findSymbol(const QString &name)
{
    const auto found =
        std::find_if(std::begin(drawings), std::end(drawings),
                     [&](const SymbolDrawing &drawing) { return name == QLatin1String(drawing.name); });
    return found == std::end(drawings) ? nullptr : found;
}

QStringList symbolNames()
{
    QStringList names;
    for (const SymbolDrawing &drawing : drawings)
        names.append(QLatin1String(drawing.name));
    return names;
}

} // namespace swabby
