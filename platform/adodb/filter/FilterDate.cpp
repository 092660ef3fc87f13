#include "platform/adodb/filter/FilterDate.h"

#include "platform/runtime/Formats.h"
#include "platform/runtime/Text.h"

#include <array>
#include <charconv>
#include <string>
#include <utility>

namespace norvel::adodb {

namespace {

// Numbers with one separator between them, exactly count of them or, with fewer allowed, at least.
template <std::size_t count>
std::optional<std::array<int, count>> numbers(std::string_view text, std::string_view separators,
                                              std::size_t least) {
    std::array<int, count> found{};
    const char* at = text.data();
    const char* const end = at + text.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) {
            if (at == end) return i >= least ? std::optional(found) : std::nullopt;
            if (separators.find(*at) == std::string_view::npos) return std::nullopt;
            ++at;
        }
        if (at == end || *at < '0' || *at > '9') return std::nullopt;
        const auto [behind, error] = std::from_chars(at, end, found[i]);
        if (error != std::errc{} || behind - at > 4) return std::nullopt;
        at = behind;
    }
    return at == end ? std::optional(found) : std::nullopt;
}

int fullYear(int year, bool twoDigits) {
    if (!twoDigits) return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

std::optional<CivilDate> dayOf(std::string_view text) {
    const bool slashes = text.find('/') != std::string_view::npos;
    const auto parts = numbers<3>(text, slashes ? "/" : "-", 3);
    if (!parts) return std::nullopt;
    const auto [a, b, c] = *parts;
    if (text.find_first_of("/-") == 4) return CivilDate{a, b, c};
    const std::size_t lastSeparator = text.find_last_of("/-");
    const int year = fullYear(c, text.size() - lastSeparator - 1 <= 2);
    int day = slashes ? b : a;
    int month = slashes ? a : b;
    if (!makeDate({year, month, day})) std::swap(day, month);
    return CivilDate{year, month, day};
}

} // namespace

std::optional<double> filterDate(std::string_view text) {
    const std::string trimmed = trimText(text);
    const std::size_t gap = trimmed.find_first_of(" Tt");
    const auto day = dayOf(std::string_view(trimmed).substr(0, gap));
    if (!day) return std::nullopt;
    CivilTime time;
    if (gap != std::string::npos) {
        const auto parts = numbers<3>(trimText(std::string_view(trimmed).substr(gap + 1)), ":.", 2);
        if (!parts) return std::nullopt;
        time = {(*parts)[0], (*parts)[1], (*parts)[2]};
    }
    const auto date = makeDate(*day, time);
    return date ? std::optional(date->days) : std::nullopt;
}

} // namespace norvel::adodb
