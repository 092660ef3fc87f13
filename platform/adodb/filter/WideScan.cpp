#include "platform/adodb/filter/WideScan.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#ifdef __SSE2__
#include <immintrin.h>
#endif
// Not for Windows of 64 bits: its stacks are aligned to 16 bytes, which the compiler does not mend
// for values of 32 (GCC bug 54412).
#if defined(__SSE2__) && defined(__GNUC__) && !defined(_WIN32)
#define NR_SCAN_THIRTY_TWO
#endif

namespace norvel::adodb {

namespace {

// Candidates are gathered from so many bytes at a time.
constexpr std::size_t stretch = 4096;
using Positions = std::array<std::uint32_t, stretch>;

// What a candidate shows: two of its bytes, at its beginning and so far behind.
struct Ends {
    char first = 0;
    char last = 0;
    std::size_t gap = 0; // of the needle's last byte from its first
};

// Writes the positions from begin up to, not including, end (at most a stretch) at which a
// candidate stands; bytes up to end + gap may be read. Returns how many.
using Gather = std::size_t (*)(const char* bytes, std::size_t begin, std::size_t end,
                               const Ends& ends, std::uint32_t* positions);

std::size_t gatherOne(const char* bytes, std::size_t begin, std::size_t end, const Ends& ends,
                      std::uint32_t* positions) {
    std::size_t count = 0;
    for (std::size_t at = begin; at < end; ++at) {
        positions[count] = static_cast<std::uint32_t>(at);
        const bool stands = bytes[at] == ends.first && bytes[at + ends.gap] == ends.last;
        count += stands ? 1 : 0;
    }
    return count;
}

#ifdef __SSE2__
// Bit i: a candidate stands at from + i.
unsigned sixteen(const char* from, const Ends& ends) {
    const auto* head = reinterpret_cast<const __m128i*>(from);
    const auto* tail = reinterpret_cast<const __m128i*>(from + ends.gap);
    const __m128i heads = _mm_cmpeq_epi8(_mm_loadu_si128(head), _mm_set1_epi8(ends.first));
    const __m128i tails = _mm_cmpeq_epi8(_mm_loadu_si128(tail), _mm_set1_epi8(ends.last));
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(heads, tails)));
}

std::size_t gatherSixteen(const char* bytes, std::size_t begin, std::size_t end, const Ends& ends,
                          std::uint32_t* positions) {
    std::size_t count = 0;
    std::size_t at = begin;
    for (; at + 32 <= end; at += 32) {
        std::uint32_t bits = sixteen(bytes + at, ends) | (sixteen(bytes + at + 16, ends) << 16U);
        for (; bits != 0; bits &= bits - 1)
            positions[count++] =
                static_cast<std::uint32_t>(at) + static_cast<std::uint32_t>(std::countr_zero(bits));
    }
    return count + gatherOne(bytes, at, end, ends, positions + count);
}
#endif

#ifdef NR_SCAN_THIRTY_TWO
__attribute__((target("avx2"))) std::size_t gatherThirtyTwo(const char* bytes, std::size_t begin,
                                                            std::size_t end, const Ends& ends,
                                                            std::uint32_t* positions) {
    const __m256i first = _mm256_set1_epi8(ends.first);
    const __m256i last = _mm256_set1_epi8(ends.last);
    std::size_t count = 0;
    std::size_t at = begin;
    for (; at + 64 <= end; at += 64) {
        const auto* head = reinterpret_cast<const __m256i*>(bytes + at);
        const auto* tail = reinterpret_cast<const __m256i*>(bytes + at + ends.gap);
        const __m256i low = _mm256_and_si256(_mm256_cmpeq_epi8(_mm256_loadu_si256(head), first),
                                             _mm256_cmpeq_epi8(_mm256_loadu_si256(tail), last));
        const __m256i high =
            _mm256_and_si256(_mm256_cmpeq_epi8(_mm256_loadu_si256(head + 1), first),
                             _mm256_cmpeq_epi8(_mm256_loadu_si256(tail + 1), last));
        const __m256i any = _mm256_or_si256(low, high);
        if (_mm256_testz_si256(any, any) != 0) continue;
        std::uint64_t bits = static_cast<std::uint32_t>(_mm256_movemask_epi8(high));
        bits = (bits << 32U) | static_cast<std::uint32_t>(_mm256_movemask_epi8(low));
        for (; bits != 0; bits &= bits - 1)
            positions[count++] =
                static_cast<std::uint32_t>(at) + static_cast<std::uint32_t>(__builtin_ctzll(bits));
    }
    return count + gatherOne(bytes, at, end, ends, positions + count);
}
#endif

Gather gatherOf(ScanWidth width) {
    switch (width) {
#ifdef NR_SCAN_THIRTY_TWO
    case ScanWidth::ThirtyTwo:
        return gatherThirtyTwo;
#endif
#ifdef __SSE2__
    case ScanWidth::Sixteen:
        return gatherSixteen;
#endif
    default:
        return gatherOne;
    }
}

// Texts that lie far from each other are fetched so many before they are looked at.
[[maybe_unused]] constexpr std::size_t ahead = 16;

std::uint32_t fourBytes(const char* from) {
    std::uint32_t word = 0;
    std::memcpy(&word, from, sizeof word);
    return word;
}

// Whether the needle stands where its first and last byte do.
bool standsAt(const char* at, std::string_view needle) {
    const std::size_t size = needle.size();
    if (size <= 2) return true;
    if (size == 3) return at[1] == needle[1];
    if (fourBytes(at) != fourBytes(needle.data())) return false;
    if (fourBytes(at + size - 4) != fourBytes(needle.data() + size - 4)) return false;
    return size <= 8 || std::memcmp(at + 4, needle.data() + 4, size - 8) == 0;
}

Ends endsOf(std::string_view needle) {
    return {needle.front(), needle.back(), needle.size() - 1};
}

bool containsOne(std::string_view text, std::string_view needle) {
    return text.find(needle) != std::string_view::npos;
}

#ifdef __SSE2__
// readable: where bytes that may be read end.
bool containsSixteen(std::string_view text, std::string_view needle, const char* readable) {
    if (text.size() < needle.size()) return false;
    const Ends ends = endsOf(needle);
    std::size_t left = text.size() - ends.gap; // places where it may stand
    for (const char* at = text.data(); left > 0; at += 16) {
        if (readable - at < static_cast<std::ptrdiff_t>(16 + ends.gap))
            return containsOne({at, left + ends.gap}, needle);
        unsigned bits = sixteen(at, ends);
        if (left < 16) bits &= (1U << left) - 1U;
        for (; bits != 0; bits &= bits - 1)
            if (standsAt(at + std::countr_zero(bits), needle)) return true;
        left -= std::min<std::size_t>(left, 16);
    }
    return false;
}
#endif

} // namespace

std::vector<ScanWidth> scanWidths() {
    std::vector<ScanWidth> widths{ScanWidth::One};
#ifdef __SSE2__
    widths.push_back(ScanWidth::Sixteen);
#endif
#ifdef NR_SCAN_THIRTY_TWO
    if (__builtin_cpu_supports("avx2")) widths.push_back(ScanWidth::ThirtyTwo);
#endif
    return widths;
}

ScanWidth widestScan() {
    static const ScanWidth widest = scanWidths().back();
    return widest;
}

// A match belongs to the run that holds its first byte, and counts where that run holds its last
// one, too.
std::size_t scanRuns(const Runs& runs, std::uint32_t begin, std::uint32_t end,
                     std::string_view needle, RowNumber* found, ScanWidth width) {
    const std::size_t behind = runs.ends[end];
    const Ends ends = endsOf(needle);
    if (begin == end || behind - runs.ends[begin] < needle.size()) return 0;
    const std::size_t last = behind - ends.gap; // no match begins here or behind
    const Gather gather = gatherOf(width);
    Positions positions;
    std::size_t count = 0;
    std::uint32_t run = begin;
    std::size_t runEnd = runs.ends[run + 1];
    std::size_t next = runs.ends[begin]; // matches before it belong to a run that is found
    for (std::size_t at = next; at < last; at += stretch) {
        if (next >= at + stretch) continue; // a long text that is found
        const std::size_t gathered =
            gather(runs.bytes, at, std::min(last, at + stretch), ends, positions.data());
        for (std::size_t i = 0; i < gathered; ++i) {
            const std::size_t position = positions[i];
            if (position < next || !standsAt(runs.bytes + position, needle)) continue;
            while (runEnd <= position)
                runEnd = runs.ends[++run + 1];
            if (position + needle.size() > runEnd) continue;
            found[count++] = run;
            next = runEnd;
        }
    }
    return count;
}

std::size_t scanThese(const Runs& runs, RowNumber* these, std::size_t count,
                      std::string_view needle, [[maybe_unused]] ScanWidth width) {
    std::size_t kept = 0;
    [[maybe_unused]] const char* readable = runs.bytes + runs.ends[runs.count];
    for (std::size_t i = 0; i < count; ++i) {
        const RowNumber run = these[i];
#ifdef __SSE2__
        if (i + ahead < count) _mm_prefetch(runs.bytes + runs.ends[these[i + ahead]], _MM_HINT_T0);
        const bool contains = width == ScanWidth::One
                                  ? containsOne(runs[run], needle)
                                  : containsSixteen(runs[run], needle, readable);
#else
        const bool contains = containsOne(runs[run], needle);
#endif
        these[kept] = run;
        kept += contains ? 1 : 0;
    }
    return kept;
}

} // namespace norvel::adodb
