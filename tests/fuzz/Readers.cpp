#include "fuzz/Readers.h"

namespace swabby {

Readers allReaders()
{
    Readers all;
    for (const auto &room :
         {macToolReaders, cleanupReaders, linuxReaders, kernelReaders, storedReaders, recordingReaders})
        for (const Reader &reader : room())
            all.push_back(reader);
    return all;
}

} // namespace swabby
