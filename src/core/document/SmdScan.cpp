#include "document/SmdScan.h"

#include "document/Paths.h"
#include "document/Text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define QUARLE_SCAN_SSE2 1
#endif
#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#include <immintrin.h>
#define QUARLE_SCAN_AVX2 1
#endif

namespace quarle {

namespace {

// One read. A line is held whole up to this length; see the header.
constexpr std::size_t BlockSize = 128 * 1024;

inline unsigned char Upper(char c) {
    const auto u = static_cast<unsigned char>(c);
    return (u >= 'a' && u <= 'z') ? static_cast<unsigned char>(u - ('a' - 'A')) : u;
}

inline bool IsLineEnd(char c) {
    return c == '\n' || c == '\r';
}

// Finds the next byte of a small set: up to three exact bytes and up to two
// letters in either case. This is the inner loop of every scan: it runs over
// every byte of every file, 64 bytes a step with AVX-512 or AVX2 where the
// processor has them, else 16 with SSE2, else 8 in a plain integer.
class ByteFinder {
public:
    // Letters are given in lower case.
    ByteFinder(std::string_view exact, std::string_view letters) {
        exactCount_ = static_cast<int>(std::min<std::size_t>(exact.size(), 3));
        letterCount_ = static_cast<int>(std::min<std::size_t>(letters.size(), 2));
        for (int i = 0; i < exactCount_; ++i) {
            exact_[i] = static_cast<unsigned char>(exact[static_cast<std::size_t>(i)]);
            table_[exact_[i]] = true;
        }
        for (int i = 0; i < letterCount_; ++i) {
            letters_[i] = static_cast<unsigned char>(letters[static_cast<std::size_t>(i)]);
            table_[letters_[i]] = true;
            table_[Upper(static_cast<char>(letters_[i]))] = true;
        }
        find_ = Pick(exactCount_, letterCount_);
    }

    const char* Find(const char* p, const char* end) const { return find_(*this, p, end); }

private:
    using FindFn = const char* (*)(const ByteFinder&, const char*, const char*);

    static const char* FindScalar(const ByteFinder& f, const char* p, const char* end) {
        for (; p < end; ++p) {
            if (f.table_[static_cast<unsigned char>(*p)]) {
                return p;
            }
        }
        return end;
    }

    // Eight bytes a step in a plain integer, for processors without the
    // vector paths below. A byte of X that is zero sets the high bit of its
    // byte in the result; a set bit above a zero byte can be false, but the
    // lowest one is always true.
    static std::uint64_t ZeroBytes(std::uint64_t x) {
        constexpr std::uint64_t Ones = 0x0101010101010101ull;
        return (x - Ones) & ~x & (Ones * 0x80);
    }

    static const char* FindWords(const ByteFinder& f, const char* p, const char* end) {
        if constexpr (std::endian::native == std::endian::little) {
            constexpr std::uint64_t Ones = 0x0101010101010101ull;
            while (end - p >= 8) {
                std::uint64_t v;
                std::memcpy(&v, p, 8);
                std::uint64_t mask = 0;
                for (int i = 0; i < f.exactCount_; ++i) {
                    mask |= ZeroBytes(v ^ (Ones * f.exact_[i]));
                }
                const std::uint64_t folded = v | (Ones * 0x20);
                for (int i = 0; i < f.letterCount_; ++i) {
                    mask |= ZeroBytes(folded ^ (Ones * f.letters_[i]));
                }
                if (mask != 0) {
                    return p + std::countr_zero(mask) / 8;
                }
                p += 8;
            }
        }
        return FindScalar(f, p, end);
    }

#ifdef QUARLE_SCAN_SSE2
    template <int Exact, int Letters>
    static __m128i Match16(__m128i x, const __m128i* e, const __m128i* l) {
        __m128i m = _mm_setzero_si128();
        for (int i = 0; i < Exact; ++i) {
            m = _mm_or_si128(m, _mm_cmpeq_epi8(x, e[i]));
        }
        if constexpr (Letters > 0) {
            const __m128i folded = _mm_or_si128(x, _mm_set1_epi8(0x20));
            for (int i = 0; i < Letters; ++i) {
                m = _mm_or_si128(m, _mm_cmpeq_epi8(folded, l[i]));
            }
        }
        return m;
    }

    template <int Exact, int Letters>
    static const char* FindSse2(const ByteFinder& f, const char* p, const char* end) {
        __m128i e[3];
        __m128i l[2];
        for (int i = 0; i < 3; ++i) {
            e[i] = _mm_set1_epi8(static_cast<char>(f.exact_[i]));
        }
        for (int i = 0; i < 2; ++i) {
            l[i] = _mm_set1_epi8(static_cast<char>(f.letters_[i]));
        }
        while (end - p >= 16) {
            const __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
            const int mask = _mm_movemask_epi8(Match16<Exact, Letters>(x, e, l));
            if (mask != 0) {
                return p + std::countr_zero(static_cast<unsigned>(mask));
            }
            p += 16;
        }
        return FindScalar(f, p, end);
    }
#endif

#ifdef QUARLE_SCAN_AVX2
    template <int Exact, int Letters>
    __attribute__((target("avx2"))) static __m256i Match32(__m256i x, const __m256i* e,
                                                           const __m256i* l) {
        __m256i m = _mm256_setzero_si256();
        for (int i = 0; i < Exact; ++i) {
            m = _mm256_or_si256(m, _mm256_cmpeq_epi8(x, e[i]));
        }
        if constexpr (Letters > 0) {
            const __m256i folded = _mm256_or_si256(x, _mm256_set1_epi8(0x20));
            for (int i = 0; i < Letters; ++i) {
                m = _mm256_or_si256(m, _mm256_cmpeq_epi8(folded, l[i]));
            }
        }
        return m;
    }

    template <int Exact, int Letters>
    __attribute__((target("avx2"))) static const char* FindAvx2(const ByteFinder& f, const char* p,
                                                                const char* end) {
        __m256i e[3];
        __m256i l[2];
        for (int i = 0; i < 3; ++i) {
            e[i] = _mm256_set1_epi8(static_cast<char>(f.exact_[i]));
        }
        for (int i = 0; i < 2; ++i) {
            l[i] = _mm256_set1_epi8(static_cast<char>(f.letters_[i]));
        }
        while (end - p >= 64) {
            const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
            const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + 32));
            const __m256i ma = Match32<Exact, Letters>(a, e, l);
            const __m256i mb = Match32<Exact, Letters>(b, e, l);
            if (!_mm256_testz_si256(_mm256_or_si256(ma, mb), _mm256_or_si256(ma, mb))) {
                const std::uint64_t mask =
                    static_cast<std::uint32_t>(_mm256_movemask_epi8(ma)) |
                    static_cast<std::uint64_t>(static_cast<std::uint32_t>(_mm256_movemask_epi8(mb)))
                        << 32;
                return p + std::countr_zero(mask);
            }
            p += 64;
        }
        return FindScalar(f, p, end);
    }

    // Where the processor has it, AVX-512 takes 64 bytes in one compare.
    template <int Exact, int Letters>
    __attribute__((target("avx512bw"))) static const char*
    FindAvx512(const ByteFinder& f, const char* p, const char* end) {
        __m512i e[3];
        __m512i l[2];
        for (int i = 0; i < 3; ++i) {
            e[i] = _mm512_set1_epi8(static_cast<char>(f.exact_[i]));
        }
        for (int i = 0; i < 2; ++i) {
            l[i] = _mm512_set1_epi8(static_cast<char>(f.letters_[i]));
        }
        const __m512i fold = _mm512_set1_epi8(0x20);
        while (end - p >= 64) {
            const __m512i x = _mm512_loadu_si512(p);
            std::uint64_t mask = 0;
            for (int i = 0; i < Exact; ++i) {
                mask |= _mm512_cmpeq_epi8_mask(x, e[i]);
            }
            if constexpr (Letters > 0) {
                const __m512i folded = _mm512_or_si512(x, fold);
                for (int i = 0; i < Letters; ++i) {
                    mask |= _mm512_cmpeq_epi8_mask(folded, l[i]);
                }
            }
            if (mask != 0) {
                return p + std::countr_zero(mask);
            }
            p += 64;
        }
        return FindScalar(f, p, end);
    }

    static bool HasAvx2() {
        static const bool has = __builtin_cpu_supports("avx2");
        return has;
    }
    static bool HasAvx512() {
        static const bool has = __builtin_cpu_supports("avx512bw");
        return has;
    }
#endif

    template <int Exact, int Letters> static FindFn Kernel() {
#ifdef QUARLE_SCAN_AVX2
        if (HasAvx512()) {
            return &FindAvx512<Exact, Letters>;
        }
        if (HasAvx2()) {
            return &FindAvx2<Exact, Letters>;
        }
#endif
#ifdef QUARLE_SCAN_SSE2
        return &FindSse2<Exact, Letters>;
#else
        return &FindWords;
#endif
    }

    static FindFn Pick(int exact, int letters) {
        switch (exact * 3 + letters) {
        case 1:
            return Kernel<0, 1>();
        case 2:
            return Kernel<0, 2>();
        case 3:
            return Kernel<1, 0>();
        case 4:
            return Kernel<1, 1>();
        case 5:
            return Kernel<1, 2>();
        case 6:
            return Kernel<2, 0>();
        case 7:
            return Kernel<2, 1>();
        case 8:
            return Kernel<2, 2>();
        case 9:
            return Kernel<3, 0>();
        case 10:
            return Kernel<3, 1>();
        case 11:
            return Kernel<3, 2>();
        default:
            return &FindWords;
        }
    }

    unsigned char exact_[3]{};
    unsigned char letters_[2]{};
    int exactCount_ = 0;
    int letterCount_ = 0;
    bool table_[256]{};
    FindFn find_ = &FindScalar;
};

const ByteFinder& LineEnds() {
    static const ByteFinder finder("\r\n", "");
    return finder;
}

// Line ends in [p, end): every LF, and every CR not followed by LF.
std::size_t CountLineEnds(const char* p, const char* end) {
    std::size_t count = 0;
    unsigned carry = 0; // the byte before p was a CR
#ifdef QUARLE_SCAN_SSE2
    const __m128i lf = _mm_set1_epi8('\n');
    const __m128i cr = _mm_set1_epi8('\r');
    while (end - p >= 16) {
        const __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const auto n = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(x, lf)));
        const auto r = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(x, cr)));
        const unsigned pairs = n & ((r << 1) | carry);
        count +=
            static_cast<std::size_t>(std::popcount(n) + std::popcount(r) - std::popcount(pairs));
        carry = (r >> 15) & 1u;
        p += 16;
    }
#endif
    for (; p < end; ++p) {
        if (*p == '\r') {
            ++count;
            carry = 1;
        } else {
            if (*p == '\n' && carry == 0) {
                ++count;
            }
            carry = 0;
        }
    }
    return count;
}

class SmdFile {
public:
    explicit SmdFile(const std::string& path) {
        file_ = Open(path);
        if (file_ == nullptr) {
            if (std::optional<std::string> found = paths::Resolve(path)) {
                file_ = Open(*found);
            }
        }
        if (file_ != nullptr) {
            std::setvbuf(file_, nullptr, _IONBF, 0); // our blocks are the buffer
        }
    }
    ~SmdFile() {
        if (file_ != nullptr) {
            std::fclose(file_);
        }
    }
    SmdFile(const SmdFile&) = delete;
    SmdFile& operator=(const SmdFile&) = delete;

    bool IsOpen() const { return file_ != nullptr; }
    std::size_t Read(char* into, std::size_t size) {
        return file_ == nullptr ? 0 : std::fread(into, 1, size, file_);
    }

private:
    static std::FILE* Open(const std::string& path) {
#ifdef _WIN32
        return _wfopen(paths::ToFsPath(path).c_str(), L"rb");
#else
        return std::fopen(paths::ToFsPath(path).c_str(), "rb");
#endif
    }

    std::FILE* file_ = nullptr;
};

// The read buffer: two blocks, so that a line cut by one read finds room in
// front of the next. Kept per thread, since every page change scans every
// file of a folder.
char* ReadBuffer() {
    thread_local std::unique_ptr<char[]> buffer(new char[2 * BlockSize]);
    return buffer.get();
}

// A line handed on by ScanLines.
struct ScanLine {
    std::string_view Text;
    std::size_t Hit;     // offset of the first byte of the finder's set in Text
    std::size_t Skipped; // lines passed over since the last line handed on
};

// The end of the line that holds P: its first CR or LF, or End. Most lines
// are short, so one look at the next 16 bytes usually settles it.
inline const char* LineEndFrom(const char* p, const char* end) {
#ifdef QUARLE_SCAN_SSE2
    if (end - p >= 16) {
        const __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const int mask = _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(x, _mm_set1_epi8('\n')),
                                                        _mm_cmpeq_epi8(x, _mm_set1_epi8('\r'))));
        if (mask != 0) {
            return p + std::countr_zero(static_cast<unsigned>(mask));
        }
        return LineEnds().Find(p + 16, end);
    }
#endif
    for (; p < end; ++p) {
        if (IsLineEnd(*p)) {
            return p;
        }
    }
    return end;
}

// The start of the line that holds P, not before Floor: the byte behind the
// last CR or LF in front of P.
inline const char* LineStartOf(const char* p, const char* floor) {
#ifdef QUARLE_SCAN_SSE2
    while (p - floor >= 16) {
        const __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p - 16));
        const int mask = _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(x, _mm_set1_epi8('\n')),
                                                        _mm_cmpeq_epi8(x, _mm_set1_epi8('\r'))));
        if (mask != 0) {
            return p - std::countl_zero(static_cast<std::uint16_t>(mask));
        }
        p -= 16;
    }
#endif
    while (p > floor && !IsLineEnd(p[-1])) {
        --p;
    }
    return p;
}

// Walks the lines of File that hold a byte of Finder (every line when Finder
// is null) and hands each to OnLine(ScanLine) until it returns false.
// Skipped is counted only when CountSkipped is set, and is 0 otherwise.
template <class OnLine>
void ScanLines(SmdFile& file, const ByteFinder* finder, bool countSkipped, OnLine&& onLine) {
    char* const buffer = ReadBuffer();
    std::size_t keep = 0;    // an unfinished line at the buffer's front
    bool skipLf = false;     // the last block ended on a CR
    bool discarding = false; // inside the cut-off rest of an over-long line
    std::size_t skipped = 0;

    // Complete lines in [p, end); the last one may lack its line end.
    auto region = [&](const char* p, const char* end) {
        const char* lineStart = p;
        while (p < end) {
            const char* hit = finder != nullptr ? finder->Find(p, end) : p;
            if (hit == end) {
                if (countSkipped) {
                    skipped += CountLineEnds(lineStart, end);
                }
                return true;
            }
            const char* start = LineStartOf(hit, lineStart);
            if (countSkipped) {
                skipped += CountLineEnds(lineStart, start);
            }
            const char* stop = LineEndFrom(hit, end);
            const ScanLine line{std::string_view(start, static_cast<std::size_t>(stop - start)),
                                static_cast<std::size_t>(hit - start), skipped};
            if (!onLine(line)) {
                return false;
            }
            skipped = 0;
            if (stop == end) {
                return true;
            }
            p = stop + ((*stop == '\r' && stop + 1 < end && stop[1] == '\n') ? 2 : 1);
            lineStart = p;
        }
        return true;
    };

    for (;;) {
        const std::size_t got = file.Read(buffer + keep, BlockSize);
        const bool atEnd = got < BlockSize;
        const std::size_t length = keep + got;
        std::size_t start = 0;
        if (skipLf && length > 0 && buffer[0] == '\n') {
            start = 1;
        }
        skipLf = false;
        if (discarding) {
            const char* stop = LineEnds().Find(buffer + start, buffer + length);
            if (stop == buffer + length) {
                keep = 0;
                if (atEnd) {
                    return;
                }
                continue;
            }
            discarding = false;
            start = static_cast<std::size_t>(stop - buffer) + 1;
            if (*stop == '\r') {
                if (start < length && buffer[start] == '\n') {
                    ++start;
                } else if (start == length) {
                    skipLf = true;
                }
            }
        }
        std::size_t regionEnd = length;
        if (!atEnd) {
            regionEnd = start;
            for (std::size_t i = length; i > start; --i) {
                if (IsLineEnd(buffer[i - 1])) {
                    regionEnd = i;
                    break;
                }
            }
        }
        if (!region(buffer + start, buffer + regionEnd)) {
            return;
        }
        if (atEnd) {
            return;
        }
        if (regionEnd > start && regionEnd == length && buffer[length - 1] == '\r') {
            skipLf = true;
        }
        const std::size_t tail = length - regionEnd;
        if (tail >= BlockSize) {
            // An over-long line: hand on what we hold, drop the rest.
            const char* head = buffer + regionEnd;
            const char* hit = finder != nullptr ? finder->Find(head, buffer + length) : head;
            if (hit != buffer + length) {
                if (!onLine(ScanLine{std::string_view(head, tail),
                                     static_cast<std::size_t>(hit - head), skipped})) {
                    return;
                }
                skipped = 0;
            } else if (countSkipped) {
                ++skipped;
            }
            discarding = true;
            keep = 0;
        } else {
            std::memmove(buffer, buffer + regionEnd, tail);
            keep = tail;
        }
    }
}

// Calls Fn(value) for each value of Line until it returns false; false then.
template <class Fn> bool ForEachValue(std::string_view line, Fn&& fn) {
    std::size_t i = 0;
    for (;;) {
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t')) {
            ++i;
        }
        std::string_view value;
        std::size_t comma;
        if (i < line.size() && line[i] == '"') {
            const std::size_t close = line.find('"', i + 1);
            if (close == std::string_view::npos) {
                value = line.substr(i + 1);
                comma = std::string_view::npos;
            } else {
                value = line.substr(i + 1, close - i - 1);
                comma = line.find(',', close + 1);
            }
        } else {
            comma = line.find(',', i);
            value = line.substr(i, comma == std::string_view::npos ? comma : comma - i);
        }
        if (!fn(value)) {
            return false;
        }
        if (comma == std::string_view::npos) {
            return true;
        }
        i = comma + 1;
    }
}

// The block-comment mark after a value: "/*" turns it on, then "*/" off.
void UpdateCommentMark(std::string_view value, bool& mark) {
    if (value.find('*') == std::string_view::npos) {
        return;
    }
    if (value.find("/*") != std::string_view::npos) {
        mark = true;
    }
    if (value.find("*/") != std::string_view::npos) {
        mark = false;
    }
}

bool StartsWithTime(std::string_view value) {
    return value.size() >= 4 && Upper(value[0]) == 'T' && Upper(value[1]) == 'I' &&
           Upper(value[2]) == 'M' && Upper(value[3]) == 'E';
}

inline bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// The frame number of a time value: its text from the sixth character on,
// as told in the header. nullopt when no digit stands there.
std::optional<i16> FrameNumber(std::string_view value) {
    if (value.size() <= 5) {
        return std::nullopt;
    }
    std::string_view text = value.substr(5);
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) {
        ++i;
    }
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        negative = text[i] == '-';
        ++i;
    }
    constexpr std::int64_t Saturated = 1'000'000; // far beyond an i16
    std::int64_t whole = 0;
    bool anyDigit = false;
    for (; i < text.size() && IsDigit(text[i]); ++i) {
        anyDigit = true;
        whole = std::min<std::int64_t>(whole * 10 + (text[i] - '0'), Saturated);
    }
    int firstFraction = 0;       // first digit behind the point
    bool restOfFraction = false; // a non-zero digit behind that one
    if (i < text.size() && text[i] == '.') {
        ++i;
        for (bool first = true; i < text.size() && IsDigit(text[i]); ++i, first = false) {
            anyDigit = true;
            if (first) {
                firstFraction = text[i] - '0';
            } else if (text[i] != '0') {
                restOfFraction = true;
            }
        }
    }
    if (!anyDigit) {
        return std::nullopt;
    }
    if (firstFraction > 5 || (firstFraction == 5 && (restOfFraction || whole % 2 == 1))) {
        ++whole;
    }
    const std::int64_t value64 = negative ? -whole : whole;
    return static_cast<i16>(std::clamp<std::int64_t>(value64, INT16_MIN, INT16_MAX));
}

// Whether the line holds ".BMP" in any case. Hit is the offset of a 'b' or
// 'B' that is tried first: in a texture line it is the one of ".bmp".
bool ContainsBmp(std::string_view line, std::size_t hit) {
    auto at = [&](std::size_t i) {
        return line[i] == '.' && Upper(line[i + 1]) == 'B' && Upper(line[i + 2]) == 'M' &&
               Upper(line[i + 3]) == 'P';
    };
    if (hit >= 1 && hit + 3 <= line.size() && at(hit - 1)) {
        return true;
    }
    for (std::size_t i = 0; i + 4 <= line.size(); ++i) {
        if (at(i)) {
            return true;
        }
    }
    return false;
}

// Whether a byte of Letters (lower case) stands in Text, in either case.
bool HoldsLetter(std::string_view text, char letter) {
    for (const char c : text) {
        if ((static_cast<unsigned char>(c) | 0x20) == static_cast<unsigned char>(letter)) {
            return true;
        }
    }
    return false;
}

void ToUpperInto(std::string_view text, std::string& into) {
    into.resize(text.size());
    std::transform(text.begin(), text.end(), into.begin(),
                   [](char c) { return static_cast<char>(Upper(c)); });
}

// The texture lines of one scan: distinct in upper case, first spelling
// kept. The spellings met so far are remembered as they stand, so that the
// lines of a mesh, which repeat a few names thousands of times, are mostly
// settled by a few integer compares.
class TextureLines {
public:
    // Upper-case forms of names already in the caller's table.
    void Know(std::string_view name) {
        ToUpperInto(name, upper_);
        upperNames_.push_back(upper_);
    }
    std::size_t Count() const { return upperNames_.size(); }

    // True when Line (a .BMP line) is new; Add() then counts it as known.
    bool IsNew(std::string_view line) {
        const Spelling key = Spelling::Of(line);
        std::int8_t& slot = slots_[key.Slot()];
        if (slot >= 0 && spellings_[static_cast<std::size_t>(slot)].Equals(key, line)) {
            return false;
        }
        for (std::size_t i = 0; i < spellings_.size(); ++i) {
            if (spellings_[i].Equals(key, line)) {
                slot = static_cast<std::int8_t>(i);
                return false;
            }
        }
        ToUpperInto(line, upper_);
        const bool isNew =
            std::find(upperNames_.begin(), upperNames_.end(), upper_) == upperNames_.end();
        if (spellings_.size() < MaxSpellings) {
            slot = static_cast<std::int8_t>(spellings_.size());
            spellings_.push_back(key);
            spellings_.back().Text.assign(line);
        }
        return isNew;
    }
    void Add() { upperNames_.push_back(upper_); } // the line IsNew saw last

private:
    // A line and its first and last eight bytes, which alone decide
    // equality for lines of up to 16 bytes.
    struct Spelling {
        std::uint64_t Head = 0;
        std::uint64_t Tail = 0;
        std::size_t Size = 0;
        std::string Text;

        static Spelling Of(std::string_view line) {
            Spelling s;
            s.Size = line.size();
            if (line.size() >= 8) {
                std::memcpy(&s.Head, line.data(), 8);
                std::memcpy(&s.Tail, line.data() + line.size() - 8, 8);
            } else {
                for (std::size_t i = 0; i < line.size(); ++i) {
                    s.Head |= std::uint64_t{static_cast<unsigned char>(line[i])} << (8 * i);
                }
                s.Tail = s.Head;
            }
            return s;
        }
        std::size_t Slot() const {
            return static_cast<std::size_t>(
                ((Head ^ (Tail * 0x9E3779B97F4A7C15ull) ^ Size) * 0xBF58476D1CE4E5B9ull) >> 58);
        }
        bool Equals(const Spelling& key, std::string_view line) const {
            return Head == key.Head && Tail == key.Tail && Size == key.Size &&
                   (Size <= 16 || std::string_view(Text) == line);
        }
    };

    static constexpr std::size_t MaxSpellings = 64;
    std::vector<Spelling> spellings_;
    std::array<std::int8_t, 64> slots_ = MakeSlots(); // a spelling's index by Slot(), or -1
    static std::array<std::int8_t, 64> MakeSlots() {
        std::array<std::int8_t, 64> slots{};
        slots.fill(-1);
        return slots;
    }
    std::vector<std::string> upperNames_;
    std::string upper_;
};

// Lines that can hold a value starting with "triangles", or a comment mark.
const ByteFinder& ReferenceFinder() {
    static const ByteFinder finder("t*", "");
    return finder;
}

} // namespace

std::string FindFileValue(const std::string& path, std::string_view word, int& line) {
    std::string result(NoToken);
    SmdFile file(path);
    if (!file.IsOpen() || word.find_first_of("\r\n") != std::string_view::npos) {
        return result; // no value holds a line end
    }
    // A value that matches holds Word's first byte, and a value that moves the
    // comment mark holds '*'. Every other line is exactly one value, unless it
    // holds a comma.
    std::optional<ByteFinder> finder;
    if (!word.empty()) {
        finder.emplace(std::string{word[0], '*', ','}, "");
    }
    std::int64_t counter = 0;
    bool comment = false;
    ScanLines(file, finder ? &*finder : nullptr, true, [&](const ScanLine& scan) {
        counter += static_cast<std::int64_t>(scan.Skipped);
        return ForEachValue(scan.Text, [&](std::string_view value) {
            ++counter;
            UpdateCommentMark(value, comment);
            if (comment || counter < line || !value.starts_with(word)) {
                return true;
            }
            std::string_view behind = value.substr(word.size());
            if (behind.starts_with('"')) {
                behind.remove_prefix(1);
            }
            if (behind.ends_with('"')) {
                behind.remove_suffix(1);
            }
            result.assign(behind);
            line = static_cast<int>(std::min<std::int64_t>(counter, INT32_MAX));
            return false;
        });
    });
    return result;
}

bool IsReferenceSmd(const std::string& path) {
    SmdFile file(path);
    bool comment = false;
    bool found = false;
    ScanLines(file, &ReferenceFinder(), false, [&](const ScanLine& scan) {
        return ForEachValue(scan.Text, [&](std::string_view value) {
            UpdateCommentMark(value, comment);
            found = !comment && value.starts_with("triangles");
            return !found;
        });
    });
    return found;
}

void ScanSmdFrames(const std::string& path, i16& frameCount) {
    static const ByteFinder finder("", "t");
    SmdFile file(path);
    ScanLines(file, &finder, false, [&](const ScanLine& scan) {
        ForEachValue(scan.Text, [&](std::string_view value) {
            if (StartsWithTime(value)) {
                if (std::optional<i16> frame = FrameNumber(value)) {
                    frameCount = *frame;
                }
            }
            return true;
        });
        return true;
    });
}

bool CollectBmpLines(const std::string& path, std::span<std::string> names, int& count) {
    static const ByteFinder finder("", "b");
    const int capacity = std::max(0, static_cast<int>(names.size()) - 1);
    TextureLines known;
    for (int i = 1; i <= std::clamp(count, 0, capacity); ++i) {
        known.Know(names[static_cast<std::size_t>(i)]);
    }
    SmdFile file(path);
    bool fits = true;
    ScanLines(file, &finder, false, [&](const ScanLine& scan) {
        if (!ContainsBmp(scan.Text, scan.Hit) || !known.IsNew(scan.Text)) {
            return true;
        }
        if (static_cast<int>(known.Count()) == capacity) {
            fits = false;
            return false;
        }
        known.Add();
        count = static_cast<int>(known.Count());
        names[static_cast<std::size_t>(count)].assign(scan.Text);
        return true;
    });
    return fits;
}

SmdFacts ScanSmdFile(const std::string& path) {
    static const ByteFinder finder("*", "tb");
    SmdFacts facts;
    SmdFile file(path);
    facts.Readable = file.IsOpen();
    bool comment = false;
    TextureLines known;
    ScanLines(file, &finder, false, [&](const ScanLine& scan) {
        // Bytes in front of the hit hold none of 't', 'b', '*': a line whose
        // rest holds no 't' and no '*' has no time value and no value that
        // matters to the reference test.
        const std::string_view rest = scan.Text.substr(scan.Hit);
        if (HoldsLetter(rest, 't') || (!facts.Reference && rest.find('*') != rest.npos)) {
            ForEachValue(scan.Text, [&](std::string_view value) {
                if (!facts.Reference) {
                    UpdateCommentMark(value, comment);
                    facts.Reference = !comment && value.starts_with("triangles");
                }
                if (StartsWithTime(value)) {
                    if (std::optional<i16> frame = FrameNumber(value)) {
                        facts.HasTime = true;
                        facts.LastFrame = *frame;
                    }
                }
                return true;
            });
        }
        if (ContainsBmp(scan.Text, scan.Hit) && known.IsNew(scan.Text)) {
            known.Add();
            facts.Textures.emplace_back(scan.Text);
        }
        return true;
    });
    return facts;
}

} // namespace quarle
