#pragma once
// Conversions and frame arithmetic that stay defined for every input. Frame numbers,
// view positions and rectangles come from the host unchecked: NaN, infinities and
// values past 2^31 must not reach a plain cast or a signed overflow.
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

// NaN becomes 0 and values beyond the target type's range clamp to its ends (the
// finite ends for a floating target). In-range values convert as a plain cast.
template <class To, class From>
To saturate_cast(From v)
{
    static_assert(std::is_arithmetic<To>::value && std::is_arithmetic<From>::value, "numbers only");
    if constexpr (std::is_floating_point<To>::value) {
        static_assert(std::is_floating_point<From>::value, "saturate_cast to a float takes a float");
        if (std::isnan(v))
            return 0;
        const long double x = v;
        if (x >= static_cast<long double>(std::numeric_limits<To>::max()))
            return std::numeric_limits<To>::max();
        if (x <= static_cast<long double>(std::numeric_limits<To>::lowest()))
            return std::numeric_limits<To>::lowest();
        return static_cast<To>(v);
    } else if constexpr (std::is_floating_point<From>::value) {
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

// a + b and a - b of 64-bit frame numbers, clamped to the 64-bit range where the
// exact result does not fit. Equal to the plain sum and difference everywhere else.
inline int64_t add64(int64_t a, int64_t b)
{
    int64_t r;
    if (__builtin_add_overflow(a, b, &r))
        return b > 0 ? std::numeric_limits<int64_t>::max() : std::numeric_limits<int64_t>::min();
    return r;
}
inline int64_t sub64(int64_t a, int64_t b)
{
    int64_t r;
    if (__builtin_sub_overflow(a, b, &r))
        return b < 0 ? std::numeric_limits<int64_t>::max() : std::numeric_limits<int64_t>::min();
    return r;
}
