#pragma once

#include <QtCore/QString>

#include <filesystem>

#import <Foundation/Foundation.h>

namespace swabby {

/// The same text as the system's own kind.
inline NSString *nativeText(const QString &text)
{
    NSString *native = [NSString stringWithUTF8String:text.toUtf8().constData()];
    return native == nil ? @"" : native;
}

/// Empty for none.
inline QString textFrom(NSString *text)
{
    return text == nil ? QString() : QString::fromUtf8(text.UTF8String);
}

/// A file by the bytes of its absolute path, whatever they mean as text.
inline NSURL *fileAddress(const std::filesystem::path &path)
{
    return [NSURL fileURLWithFileSystemRepresentation:path.c_str() isDirectory:NO relativeToURL:nil];
}

} // namespace swabby
