// Raw values of a provider, read as the types of columns. Nothing is rounded or guessed: where a
// value has no exact reading as the type the answer is nullopt.
#pragma once

#include "platform/adodb/Constants.h"
#include "platform/adodb/store/Batch.h"
#include "platform/runtime/Variant.h"

#include <cstdint>
#include <optional>

namespace norvel::adodb {

// The value with its own type; a long value is moved out of the batch.
Variant rawVariant(const Batch& batch, RawKind kind, RawValue value);

// Numbers (0 is False) and the texts "true" and "false" in any case.
std::optional<bool> rawBoolean(const Batch& batch, RawKind kind, RawValue value);
// Doubles, and integers that a double holds exactly.
std::optional<double> rawDouble(RawKind kind, RawValue value);
// Dates, ISO texts, and numbers by SQLite's convention (see IsoDate.h), as OLE Automation days.
std::optional<double> rawDate(const Batch& batch, RawKind kind, RawValue value);
// Texts that are a number of at most 28 characters.
std::optional<Decimal> rawDecimal(const Batch& batch, RawKind kind, RawValue value);

// The decimal number of the double's shortest notation that reads back as it; nullopt out of range.
std::optional<Decimal> shortestDecimal(double value);

// Scaled numbers stay below 10^18 in magnitude and have at most 6 decimals; others are exceptional.
inline constexpr std::int64_t widestScaled = 999'999'999'999'999'999;
inline constexpr unsigned greatestScale = 6;
std::int64_t powerOfTen(unsigned exponent); // exponent at most 18
std::uint8_t startScale(DataTypeEnum type);

bool isWholeNumber(VarType type); // of 64 bits at most, signed, or unsigned of 32

} // namespace norvel::adodb
