#include "platform/linux/desktop/ToolkitSettings.h"

#include <algorithm>
#include <cctype>

namespace swabby {
namespace {

/// Reads on from the front, as long as there is enough.
class Reader {
public:
    explicit Reader(std::string_view bytes) : m_rest(bytes) {}

    bool isGood() const { return m_isGood; }
    void setBigEndian(bool isBig) { m_isBig = isBig; }

    std::string_view take(std::size_t size)
    {
        if (size > m_rest.size())
            m_isGood = false;
        const std::string_view taken = m_isGood ? m_rest.substr(0, size) : std::string_view();
        m_rest.remove_prefix(taken.size());
        return taken;
    }

    std::uint32_t number(std::size_t size)
    {
        const std::string_view bytes = take(size);
        std::uint32_t value = 0;
        for (std::size_t at = 0; at < bytes.size(); ++at)
            value = value << 8 | static_cast<unsigned char>(bytes[m_isBig ? at : bytes.size() - 1 - at]);
        return value;
    }

    /// With what fills it up to a multiple of four bytes.
    std::string_view text(std::size_t size)
    {
        const std::string_view words = take(size);
        take((4 - size % 4) % 4);
        return words;
    }

private:
    std::string_view m_rest;
    bool m_isGood = true;
    bool m_isBig = false;
};

// "Mint-Y-Dark-Aqua" is one, "Arc-Darker" is not.
bool hasDarkName(std::string name)
{
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char letter) { return std::isalnum(letter) ? std::tolower(letter) : ' '; });
    return (' ' + name + ' ').find(" dark ") != std::string::npos || name == "highcontrastinverse" ||
           name == "blackbird";
}

} // namespace

ToolkitSettings parseToolkitSettings(std::string_view property)
{
    enum Type : std::uint32_t { figure, words, color };
    Reader reader(property);
    reader.setBigEndian(reader.number(1) != 0);
    reader.take(3);
    reader.number(4); // how often they have changed
    ToolkitSettings settings;
    for (std::uint32_t left = reader.number(4); left > 0; --left) {
        const std::uint32_t type = reader.number(1);
        reader.take(1);
        const std::string name(reader.text(reader.number(2)));
        reader.number(4);
        std::variant<std::int32_t, std::string> value;
        if (type == figure)
            value = static_cast<std::int32_t>(reader.number(4));
        else if (type == words)
            value = std::string(reader.text(reader.number(4)));
        else
            reader.take(8);
        if (!reader.isGood() || type > color)
            break;
        settings[name] = value;
    }
    return settings;
}

std::optional<bool> prefersDark(const ToolkitSettings &settings)
{
    const auto wish = settings.find("Gtk/ApplicationPreferDarkTheme");
    const auto *isWished = wish == settings.end() ? nullptr : std::get_if<std::int32_t>(&wish->second);
    const auto theme = settings.find("Net/ThemeName");
    const auto *name = theme == settings.end() ? nullptr : std::get_if<std::string>(&theme->second);
    const bool isDark = (isWished != nullptr && *isWished != 0) || (name != nullptr && hasDarkName(*name));
    return isDark ? std::optional(true) : std::nullopt;
}

} // namespace swabby
