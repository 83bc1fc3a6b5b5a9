#pragma once
// Conversions that stay defined for every input: NaN becomes 0 and values beyond
// the target type's range clamp to its ends. In-range values convert as a plain cast.
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

template <class To, class From>
To saturate_cast(From v)
{
    static_assert(std::is_integral<To>::value, "saturate_cast converts to an integer type");
    if constexpr (std::is_floating_point<From>::value) {
        if (std::isnan(v))
            return 0;
        // Compare in long double: the limits of 64-bit types are not exact in double.
        const long double x = v;
        if (x <= static_cast<long double>(std::numeric_limits<To>::min()))
            return std::numeric_limits<To>::min();
        if (x >= static_cast<long double>(std::numeric_limits<To>::max()))
            return std::numeric_limits<To>::max();
        return static_cast<To>(v);
    } else {
        if constexpr (std::is_signed<From>::value) {
            if (v < 0) {
                if constexpr (!std::is_signed<To>::value)
                    return 0;
                else
                    return intmax_t(v) < intmax_t(std::numeric_limits<To>::min()) ? std::numeric_limits<To>::min()
                                                                                  : static_cast<To>(v);
            }
        }
        return uintmax_t(v) > uintmax_t(std::numeric_limits<To>::max()) ? std::numeric_limits<To>::max()
                                                                         : static_cast<To>(v);
    }
}

// a - b of two frame numbers, computed in 64 bits and then narrowed to 32 bits:
// equal to the 32-bit difference wherever that is defined, and never overflows.
inline int32_t diff32(int64_t a, int64_t b)
{
    return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(a) - static_cast<uint64_t>(b)));
}
