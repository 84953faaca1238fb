#include "platform/posix/RemovalGuard.h"

#include "platform/posix/HeldFolder.h"

#include <algorithm>
#include <string_view>

namespace swabby {
namespace {

bool isPlain(std::string_view part)
{
    return !part.empty() && part != "." && part != "..";
}

/// The parts of a path text, empty ones too; no value when one of them leads anywhere but down.
std::optional<std::vector<std::string>> plainParts(std::string_view text)
{
    std::vector<std::string> parts;
    while (true) {
        const std::size_t end = text.find('/');
        const std::string_view part = text.substr(0, end);
        if (!isPlain(part))
            return std::nullopt;
        parts.emplace_back(part);
        if (end == std::string_view::npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

/// How much has to be as it was found.
using Agreement = bool (FileIdentity::*)(const FileIdentity &other) const;

std::optional<HeldEntry> held(const RemovalTarget &target, Agreement agrees)
{
    const std::string &path = target.path.native();
    std::string allowed = target.allowedFolder.native();
    while (allowed.ends_with('/'))
        allowed.pop_back();
    // A path with a zero byte would end there for the system.
    if (!target.allowedFolder.is_absolute() || path.find('\0') != std::string::npos ||
        !path.starts_with(allowed + '/'))
        return std::nullopt;
    if (!allowed.empty() && !plainParts(std::string_view(allowed).substr(1)))
        return std::nullopt;
    auto parts = plainParts(std::string_view(path).substr(allowed.size() + 1));
    if (!parts)
        return std::nullopt;

    HeldEntry entry = {holdFolder(allowed.empty() ? "/" : allowed), parts->back()};
    parts->pop_back();
    for (const std::string &part : *parts)
        if (entry.folder.isOpen())
            entry.folder = holdFolder(entry.folder.number(), part, Links::refuse);
    if (!entry.folder.isOpen())
        return std::nullopt;
    const auto found = identityIn(entry.folder.number(), entry.name);
    if (!found || !((*found).*agrees)(target.identity))
        return std::nullopt;
    return entry;
}

} // namespace

std::optional<HeldEntry> passGuard(const RemovalTarget &target)
{
    return held(target, &FileIdentity::isSameThing);
}

std::optional<HeldEntry> passTrashGuard(const RemovalTarget &target)
{
    return held(target, &FileIdentity::isUntouched);
}

} // namespace swabby
