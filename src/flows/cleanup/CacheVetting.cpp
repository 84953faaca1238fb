#include "flows/cleanup/CacheVetting.h"

#include "engine/ByteCount.h"

namespace swabby {

QCoro::Task<VettedCaches> vetCaches(CloudAI &ai, std::vector<RemovableItem> caches, ScanControl control)
{
    VettedCaches vetted;
    Asking asking = {control.stop, Unlocking::mayAsk};
    for (const RemovableItem &cache : caches) {
        if (control.stop.stopRequested())
            break;
        control.report({.what = cache.title,
                        .done = static_cast<std::int64_t>(vetted.suggestions.size()),
                        .total = static_cast<std::int64_t>(caches.size())});
        const auto verdict =
            co_await ai.assessCacheFolder(cache.title, fileByteCount(cache.sizeBytes), asking);
        vetted.wasSent = vetted.wasSent || verdict.wasSent;
        vetted.host = verdict.host;
        if (verdict.failure)
            vetted.failure = verdict.failure;
        // Nobody is asked for a password twice in a row.
        if (verdict.failure == ModelFailure::storeLocked)
            asking.unlocking = Unlocking::never;
        vetted.suggestions.push_back({cache, verdict.value.looksSafe, verdict.value.reason});
    }
    co_return vetted;
}

} // namespace swabby
