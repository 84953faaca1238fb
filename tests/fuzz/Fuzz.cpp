// Feeds arbitrary bytes to one of the readers:
//     swabby_fuzz --reader=NAME [OPTIONS OF LIBFUZZER] CORPUS…
// --readers prints their names.

#include "fuzz/Readers.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <span>

using namespace swabby;

namespace {

bool (*holds)(Reader::Text text) = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(const int *count, char ***arguments)
{
    for (const std::string_view argument : std::span(*arguments, static_cast<std::size_t>(*count)))
        for (const Reader &reader : allReaders()) {
            if (argument == "--readers")
                std::puts(reader.name);
            if (argument == std::string("--reader=") + reader.name)
                holds = reader.holds;
        }
    if (holds == nullptr)
        std::exit(EXIT_FAILURE);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (!holds({reinterpret_cast<const char *>(data), size}))
        std::abort();
    return 0;
}
