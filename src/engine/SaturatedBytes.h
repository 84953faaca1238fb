#pragma once

#include <cstdint>
#include <limits>

namespace swabby {

/// Sums and multiples of sizes. A folder of invented sizes must not end the program, so what does not fit
/// becomes the nearest size that does.
inline std::int64_t saturatedSum(std::int64_t left, std::int64_t right)
{
    std::int64_t sum = 0;
    if (!__builtin_add_overflow(left, right, &sum))
        return sum;
    return right > 0 ? std::numeric_limits<std::int64_t>::max() : std::numeric_limits<std::int64_t>::min();
}

inline std::int64_t saturatedProduct(std::int64_t left, std::int64_t right)
{
    std::int64_t product = 0;
    if (!__builtin_mul_overflow(left, right, &product))
        return product;
    return (left > 0) == (right > 0) ? std::numeric_limits<std::int64_t>::max()
                                     : std::numeric_limits<std::int64_t>::min();
}

} // namespace swabby
