#include "platform/mactools/NettopText.h"

#include "platform/TextScan.h"

namespace swabby {
namespace {

std::vector<std::string_view> fieldsOf(std::string_view line)
{
    std::vector<std::string_view> fields;
    for (;;) {
        const std::size_t comma = line.find(',');
        fields.push_back(line.substr(0, comma));
        if (comma == std::string_view::npos)
            return fields;
        line.remove_prefix(comma + 1);
    }
}

// The label is the name and the pid with a dot between; the name may hold dots of its own.
std::optional<std::int32_t> pidOf(std::string_view label)
{
    const std::size_t dot = label.rfind('.');
    if (dot == std::string_view::npos)
        return std::nullopt;
    return integerOf<std::int32_t>(label.substr(dot + 1));
}

std::int64_t bytesAt(const std::vector<std::string_view> &fields, std::size_t index)
{
    return index < fields.size() ? integerOf<std::int64_t>(fields[index]).value_or(0) : 0;
}

} // namespace

std::vector<NetworkRow> parseNettop(std::string_view text)
{
    std::vector<NetworkRow> rows;
    bool sampleBegun = false;
    forEachLine(text, [&](std::string_view line) {
        if (line.starts_with(",bytes_in")) {
            sampleBegun = true;
            rows.clear();
        } else if (sampleBegun) {
            const std::vector<std::string_view> fields = fieldsOf(line);
            if (const auto pid = pidOf(fields.front()))
                rows.push_back({*pid, bytesAt(fields, 1), bytesAt(fields, 2)});
        }
        return true;
    });
    return rows;
}

} // namespace swabby
