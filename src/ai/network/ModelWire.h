#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QUrl>

#include <chrono>
#include <optional>

// What Swabby and the small program that speaks over the network for it say to each other: a request over its
// standard input, then the mark and the result over its standard output.

namespace swabby {

inline constexpr auto networkProgram = "swabby-network";

/// One question to the model as it goes over the wire.
struct ModelRequest {
    QUrl address;
    QByteArray key; ///< empty: none is sent
    QByteArray body;
    std::chrono::milliseconds time{60'000}; ///< of the whole request, however steadily it drips
    qint64 answerBytes = 1'000'000;         ///< of an answer; a longer one counts as none
};

/// Written as soon as the question has left this computer.
inline constexpr char sentMark = 's';

/// How a request ended.
struct ModelResult {
    enum class Problem { none, noConnection, noHttp };

    Problem problem = Problem::noConnection;
    qint32 status = 0; ///< of HTTP; without a problem only
    QByteArray body;   ///< of an answer with a good status
};

inline QDataStream &operator<<(QDataStream &stream, const ModelRequest &request)
{
    return stream << request.address << request.key << request.body
                  << static_cast<qint64>(request.time.count()) << request.answerBytes;
}

inline QDataStream &operator>>(QDataStream &stream, ModelRequest &request)
{
    qint64 milliseconds = 0;
    stream >> request.address >> request.key >> request.body >> milliseconds >> request.answerBytes;
    request.time = std::chrono::milliseconds(milliseconds);
    return stream;
}

inline QDataStream &operator<<(QDataStream &stream, const ModelResult &result)
{
    return stream << result.problem << result.status << result.body;
}

inline QDataStream &operator>>(QDataStream &stream, ModelResult &result)
{
    return stream >> result.problem >> result.status >> result.body;
}

template <typename Said>
QByteArray bytesOf(const Said &said)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << said;
    return bytes;
}

/// No value when the bytes end before it does.
template <typename Said>
std::optional<Said> saidIn(const QByteArray &bytes)
{
    QDataStream stream(bytes);
    Said said;
    stream >> said;
    return stream.status() == QDataStream::Ok ? std::optional(said) : std::nullopt;
}

} // namespace swabby
