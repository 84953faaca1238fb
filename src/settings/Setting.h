#pragma once

#include <QtCore/QJsonValue>
#include <QtCore/QStringList>

#include <array>
#include <optional>
#include <string_view>
#include <type_traits>

namespace swabby {

/// All that is to be known of one preference, whatever its type.
struct SettingKey {
    enum class Type { number, integer, boolean, text, date, textList };
    using Words = std::array<const char *, 4>;
    using Check = bool (*)(const QJsonValue &);

    const char *name;
    Type type;
    double figure = 0;              ///< what a figure or a switch is by default; all else is absent or empty
    Words words = {};               ///< what a text may say, the default first; without any, everything
    Check isAllowed = nullptr;      ///< what a value that somebody gives has to pass beside its type
    const char *expected = nullptr; ///< what is taken then, in words; else the type's own

    QJsonValue defaultValue() const;
    /// By their names: libraries may each have a table of their own.
    bool operator==(const SettingKey &other) const { return std::string_view(name) == other.name; }
    /// Which of the words that is; no value when it is none of them.
    std::optional<int> wordIndex(const QString &word) const;
};

template <typename Value>
constexpr SettingKey::Type settingTypeOf()
{
    if constexpr (std::is_same_v<Value, bool>)
        return SettingKey::Type::boolean;
    else if constexpr (std::is_floating_point_v<Value>)
        return SettingKey::Type::number;
    else if constexpr (std::is_integral_v<Value>)
        return SettingKey::Type::integer;
    else if constexpr (std::is_same_v<Value, std::optional<double>>)
        return SettingKey::Type::date;
    else if constexpr (std::is_same_v<Value, QStringList>)
        return SettingKey::Type::textList;
    else
        return SettingKey::Type::text;
}

/// The same with the type it has in the program. An enumeration is kept by its cases' words, in their order;
/// a date in seconds since 1970.
template <typename Value>
struct Setting : SettingKey {
    constexpr Setting(const char *name, Value otherwise) requires std::is_arithmetic_v<Value>
        : SettingKey{.name = name, .type = settingTypeOf<Value>(), .figure = static_cast<double>(otherwise)}
    {
    }
    constexpr Setting(const char *name, Words words, Check isAllowed = nullptr,
                      const char *expected = nullptr) requires std::is_enum_v<Value>
        : SettingKey{.name = name,
                     .type = settingTypeOf<Value>(),
                     .words = words,
                     .isAllowed = isAllowed,
                     .expected = expected}
    {
    }
    constexpr explicit Setting(const char *name, Check isAllowed = nullptr,
                               const char *expected = nullptr) requires std::is_class_v<Value>
        : SettingKey{
              .name = name, .type = settingTypeOf<Value>(), .isAllowed = isAllowed, .expected = expected}
    {
    }
};

} // namespace swabby
