// The head of a .bmp file: what the model compiler looks at before it takes
// a texture. Only the headers are read, never the pixels.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quarle {

struct BmpHeader {
    bool Readable = false; // the file could be opened
    bool Bitmap = false;   // "BM" and a file and info header that are complete
    // The file header and a plain 40-byte info header are in the file, "BM"
    // or not (the model compiler does not look at those two letters); the
    // fields below are then read as such.
    bool PlainHeaders = false;
    std::uint64_t FileSize = 0;
    std::uint32_t DeclaredSize = 0; // the file's size as its header gives it
    std::uint16_t Reserved1 = 0;
    std::uint16_t Reserved2 = 0;
    std::uint16_t Planes = 0;
    std::uint32_t PixelOffset = 0; // where the pixels start in the file
    std::uint32_t InfoSize = 0;    // 40 for the plain header; 12, 108, 124 for others
    std::int32_t Width = 0;
    std::int32_t Height = 0; // negative: rows from the top
    std::uint16_t BitsPerPixel = 0;
    std::uint32_t Compression = 0;    // 0: none; 1, 2: RLE
    std::uint32_t PaletteColours = 0; // as the header gives it; 0 means all of them

    // The palette's entries the file holds between the headers and the pixels.
    std::uint32_t PaletteRoom() const;
    // True when the pixels that the size asks for are all in the file.
    bool PixelsComplete() const;
};

// Reads the headers from the first bytes of a file (more bytes do no harm;
// FileSize is the length of bytes unless fileSize is given).
BmpHeader ReadBmpHeader(std::string_view bytes, std::uint64_t fileSize = 0);

// Reads the headers of the file at path (document bytes; case fallback).
BmpHeader ReadBmpFile(const std::string& path);

} // namespace quarle
