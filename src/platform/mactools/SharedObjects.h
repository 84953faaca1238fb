#pragma once

#include <QtCore/QByteArray>

namespace swabby {

/// Whether a binary property list stays small once everything that it names several times is written out that
/// often, as its reader does: lists of lists that name the same one ten times make a hundred million of 150
/// bytes. False too for one that names itself, that is nested deeper than any real one, and that cannot be
/// read. True for bytes that are no binary property list.
bool staysSmallWrittenOut(const QByteArray &propertyList);

} // namespace swabby
