// Arrays in files, read and written in pieces: .npy, raw little-endian elements, and text with one element a line.
//
// A reader knows at once what the file promises (type, shape, length where the format tells it) and throws a
// ToolError with a message for the user when the file does not hold it. A writer puts everything into a temporary file
// beside the target and takes the target's name only in commit(): whatever goes wrong before, a file that was there
// stays as it was.
#pragma once

#include "registry.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace okt::tool {

enum class Format { npy, raw, csv };

// By the name's ending: .npy; .csv and .txt; anything else is raw.
Format formatOf(const std::filesystem::path& path);

// The dimensions of an array; a flat array of unknown length until it has been read has none.
struct Shape {
    std::vector<std::uint64_t> extents;
    bool columnsFirst = false;  // elements in Fortran order
    bool operator==(const Shape&) const = default;
};

// (3, 4)
std::string describe(const Shape& shape);

class ArrayReader {
public:
    virtual ~ArrayReader() = default;

    // Reads up to `most` elements; fewer only at the end of the array.
    virtual std::size_t read(void* to, std::size_t most) = 0;

    // Number of elements, where the format tells it ahead.
    virtual std::optional<std::uint64_t> count() const = 0;
    virtual std::optional<Shape> shape() const { return std::nullopt; }

    // Share of the file that is read, 0 to 1.
    virtual double progress() const = 0;
};

class ArrayWriter {
public:
    virtual ~ArrayWriter() = default;
    virtual void write(const void* from, std::size_t count) = 0;

    // Completes the file and gives it its name. An array written in another number of elements than `shape` has, or
    // without a shape, becomes one-dimensional.
    virtual void commit() = 0;
};

std::unique_ptr<ArrayReader> openReader(const std::filesystem::path& path, Format format, ElementType type);
std::unique_ptr<ArrayWriter> openWriter(const std::filesystem::path& path, Format format, ElementType type,
                                        const std::optional<Shape>& shape);

}  // namespace okt::tool
