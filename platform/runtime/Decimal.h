// Exact decimal numbers of up to 96 bits, as OLE Automation's DECIMAL.
#pragma once

#include "platform/runtime/Api.h"

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace norvel {

// value = (negative ? -1 : 1) * (high * 2^64 + low) / 10^scale, scale 0 to 28.
// Equality compares numbers: 1.50 equals 1.5.
class NR_API Decimal {
  public:
    Decimal() = default;
    explicit Decimal(std::int64_t value);
    // A scale beyond 28 raises 5, here and in fromParts.
    static Decimal fromScaled(std::int64_t mantissa, unsigned scale);
    static Decimal fromParts(bool negative, std::uint32_t high, std::uint64_t low, unsigned scale);
    // The shortest decimal that reads back as the double, at most 15 digits. nullopt out of range.
    static std::optional<Decimal> fromDouble(double value);
    // Invariant notation: optional sign, digits, '.', digits, optional exponent. nullopt if it is
    // not, and out of range. Decimals beyond the 28th, or beyond what 96 bits hold, are rounded
    // half to even.
    static std::optional<Decimal> fromText(std::string_view text);

    bool negative() const { return negative_; }
    std::uint32_t high() const { return high_; }
    std::uint64_t low() const { return low_; }
    unsigned scale() const { return scale_; }

    // At most that many decimals, rounded half to even.
    Decimal rounded(unsigned decimals) const;
    double toDouble() const;
    // The digits with '.' as separator, trailing zeros of the fraction dropped.
    std::string toText() const;
    bool operator==(const Decimal& other) const;
    std::strong_ordering operator<=>(const Decimal& other) const;

  private:
    std::uint64_t low_ = 0;
    std::uint32_t high_ = 0;
    std::uint8_t scale_ = 0;
    bool negative_ = false;
};

} // namespace norvel
