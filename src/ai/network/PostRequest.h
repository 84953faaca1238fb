#pragma once

#include "ai/ModelConnection.h"

#include <QtCore/QPromise>

#include <memory>

namespace swabby {

using ModelPromise = std::shared_ptr<QPromise<ModelResponse>>;

inline constexpr auto networkLibrary = "libswabby-network.so";
inline constexpr auto postFunctionName = "swabbyPost";
/// Sends the request from the calling thread, whose event loop carries it on, and keeps the promise however
/// it ends, also when the parent goes away before. In a library of its own, since few questions are asked and
/// what speaks over the network is large.
using PostFunction = void(const ModelRequest &request, const ModelConnection::Limits &limits,
                          const ModelPromise &promise, QObject *parent);

} // namespace swabby
