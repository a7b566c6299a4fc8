#include "array_file.h"

#include "tool_error.h"
#include "values.h"

#include <algorithm>
#include <bit>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string_view>
#include <system_error>

#if defined(_WIN32)
#include <process.h>
#define getpid _getpid
#define fseeko _fseeki64
#else
#include <unistd.h>
#endif

namespace okt::tool {
namespace fs = std::filesystem;
namespace {

static_assert(std::endian::native == std::endian::little, "elements go between memory and files as they are");

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

std::string reason() { return std::generic_category().message(errno); }

std::string lowerCase(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::string_view numpyName(ElementType type) {
    constexpr std::string_view names[] = {"<f4", "<f8", "<c8", "<c16"};
    return names[static_cast<int>(type)];
}

// What the reader and the writer of any format share: the open file, its name and type, and the failing calls.
struct Source {
    fs::path path;
    ElementType type;
    File file;
    std::uint64_t size = 0, consumed = 0;  // bytes; the size is 0 where it is not known (pipes)
    bool sized = false;

    Source(const fs::path& p, ElementType t) : path(p), type(t) {
        std::error_code error;
        const auto status = fs::status(p, error);
        if (fs::is_directory(status)) fail(exitFile, "{} is a directory", p.string());
        file.reset(std::fopen(p.string().c_str(), "rb"));
        if (!file) fail(exitFile, "cannot read {}: {}", p.string(), reason());
        if (fs::is_regular_file(status)) {
            size = fs::file_size(p, error);
            sized = !error;
        }
    }

    std::size_t readBytes(void* to, std::size_t most) {
        const std::size_t got = std::fread(to, 1, most, file.get());
        if (got < most && std::ferror(file.get())) fail(exitFile, "cannot read {}: {}", path.string(), reason());
        consumed += got;
        return got;
    }

    double progress() const {
        return sized && size > 0 ? static_cast<double>(consumed) / static_cast<double>(size) : 0.0;
    }
};

// Raw elements from the start of the file to its end.
class RawReader : public ArrayReader {
public:
    RawReader(const fs::path& path, ElementType type) : source_(path, type) {
        if (source_.sized && source_.size % sizeOf(type) != 0)
            fail(exitFile, "{} has {} bytes, which is no whole number of {} elements of {} bytes", path.string(),
                 source_.size, typeName(type), sizeOf(type));
    }

    std::size_t read(void* to, std::size_t most) override {
        const std::size_t element = sizeOf(source_.type), bytes = source_.readBytes(to, most * element);
        if (bytes % element != 0)
            fail(exitFile, "{} ends in the middle of a {} element, after {} bytes", source_.path.string(),
                 typeName(source_.type), source_.consumed);
        return bytes / element;
    }

    std::optional<std::uint64_t> count() const override {
        if (!source_.sized) return std::nullopt;
        return source_.size / sizeOf(source_.type);
    }
    double progress() const override { return source_.progress(); }

private:
    Source source_;
};

// The header of a .npy file: a Python dictionary with the keys descr, fortran_order and shape.
struct NpyHeader {
    std::string descr;
    Shape shape;
};

class NpyHeaderParser {
public:
    explicit NpyHeaderParser(std::string_view text) : text_(text) {}

    std::optional<NpyHeader> parse() {
        NpyHeader header;
        bool haveDescr = false, haveOrder = false, haveShape = false;
        if (!take('{')) return std::nullopt;
        while (!take('}')) {
            const auto key = quoted();
            if (!key || !take(':')) return std::nullopt;
            if (*key == "descr") {
                // A record type has a list here, which is no array of numbers.
                const auto descr = quoted();
                if (!descr) return std::nullopt;
                header.descr = *descr;
                haveDescr = true;
            } else if (*key == "fortran_order") {
                if (word("True"))
                    header.shape.columnsFirst = true;
                else if (!word("False"))
                    return std::nullopt;
                haveOrder = true;
            } else if (*key == "shape") {
                if (!take('(')) return std::nullopt;
                while (!take(')')) {
                    const auto extent = number();
                    if (!extent) return std::nullopt;
                    header.shape.extents.push_back(*extent);
                    if (!take(',') && !peek(')')) return std::nullopt;
                }
                haveShape = true;
            } else {
                return std::nullopt;
            }
            if (!take(',') && !peek('}')) return std::nullopt;
        }
        skipSpace();
        if (!text_.empty() || !haveDescr || !haveOrder || !haveShape) return std::nullopt;
        // In one dimension both orders are the same.
        if (header.shape.extents.size() < 2) header.shape.columnsFirst = false;
        return header;
    }

private:
    void skipSpace() {
        while (!text_.empty() && std::isspace(static_cast<unsigned char>(text_.front()))) text_.remove_prefix(1);
    }
    bool peek(char c) {
        skipSpace();
        return !text_.empty() && text_.front() == c;
    }
    bool take(char c) {
        if (!peek(c)) return false;
        text_.remove_prefix(1);
        return true;
    }
    bool word(std::string_view expected) {
        skipSpace();
        if (!text_.starts_with(expected)) return false;
        text_.remove_prefix(expected.size());
        return true;
    }
    std::optional<std::string> quoted() {
        skipSpace();
        if (text_.empty() || (text_.front() != '\'' && text_.front() != '"')) return std::nullopt;
        const std::size_t end = text_.find(text_.front(), 1);
        if (end == std::string_view::npos) return std::nullopt;
        std::string inside(text_.substr(1, end - 1));
        text_.remove_prefix(end + 1);
        return inside;
    }
    std::optional<std::uint64_t> number() {
        skipSpace();
        std::uint64_t value = 0;
        const auto [end, error] = std::from_chars(text_.data(), text_.data() + text_.size(), value);
        if (error != std::errc()) return std::nullopt;
        text_.remove_prefix(static_cast<std::size_t>(end - text_.data()));
        take('L');  // written by old versions
        return value;
    }

    std::string_view text_;
};

constexpr std::string_view npyMagic = "\x93NUMPY";

class NpyReader : public ArrayReader {
public:
    NpyReader(const fs::path& path, ElementType type) : source_(path, type) {
        const std::string name = path.string();
        unsigned char start[12];
        if (source_.readBytes(start, 8) < 8 || std::memcmp(start, npyMagic.data(), npyMagic.size()) != 0)
            fail(exitFile, "{} is no .npy file: it does not begin with the mark of that format", name);
        const unsigned version = start[6];
        if (version < 1 || version > 3)
            fail(exitFile, "{} is a .npy file of version {}.{}, which is not known here", name, start[6], start[7]);

        const std::size_t lengthBytes = version == 1 ? 2 : 4;
        if (source_.readBytes(start + 8, lengthBytes) < lengthBytes) truncatedHeader();
        std::size_t length = 0;
        for (std::size_t i = 0; i < lengthBytes; ++i) length |= std::size_t{start[8 + i]} << (8 * i);
        constexpr std::size_t longest = 1 << 20;
        if (length > longest)
            fail(exitFile, "{} is a .npy file with a header of {} bytes, which is too long", name, length);
        std::string text(length, '\0');
        if (source_.readBytes(text.data(), length) < length) truncatedHeader();

        const auto header = NpyHeaderParser(text).parse();
        if (!header) fail(exitFile, "the header of {} cannot be read as that of a .npy file", name);
        if (header->descr != numpyName(type))
            fail(exitFile, "{} holds elements of type '{}', but {} ('{}') is expected", name, header->descr,
                 typeName(type), numpyName(type));
        shape_ = header->shape;
        constexpr std::size_t mostDimensions = 64;
        if (shape_.extents.size() > mostDimensions)
            fail(exitFile, "{} has {} dimensions, which is too many", name, shape_.extents.size());

        count_ = 1;
        for (const std::uint64_t extent : shape_.extents) {
            if (extent != 0 && count_ > std::numeric_limits<std::uint64_t>::max() / sizeOf(type) / extent)
                fail(exitFile, "the header of {} promises an impossible number of elements: shape {}", name,
                     describe(shape_));
            count_ *= extent;
        }
        left_ = count_;
        if (source_.sized) {
            const std::uint64_t promised = count_ * sizeOf(type), data = source_.size - source_.consumed;
            if (data < promised)
                fail(exitFile, "{} is truncated: its header promises {} elements ({} bytes), and {} bytes follow", name,
                     count_, promised, data);
            if (data > promised)
                fail(exitFile, "{} has {} bytes behind the {} elements that its header promises", name, data - promised,
                     count_);
        }
    }

    std::size_t read(void* to, std::size_t most) override {
        const std::size_t element = sizeOf(source_.type);
        const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(most, left_));
        const std::size_t bytes = source_.readBytes(to, wanted * element);
        if (bytes < wanted * element)
            fail(exitFile, "{} is truncated: its header promises {} elements, and it ends within element {}",
                 source_.path.string(), count_, count_ - left_ + bytes / element);
        left_ -= wanted;
        return wanted;
    }

    std::optional<std::uint64_t> count() const override { return count_; }
    std::optional<Shape> shape() const override { return shape_; }
    double progress() const override { return source_.progress(); }

private:
    [[noreturn]] void truncatedHeader() const {
        fail(exitFile, "{} is truncated within its header", source_.path.string());
    }

    Source source_;
    Shape shape_;
    std::uint64_t count_ = 0, left_ = 0;
};

// One element a line; empty lines and lines that begin with # are passed over.
class CsvReader : public ArrayReader {
public:
    CsvReader(const fs::path& path, ElementType type) : source_(path, type), buffer_(1 << 16) {}

    std::size_t read(void* to, std::size_t most) override {
        auto* element = static_cast<unsigned char*>(to);
        std::size_t done = 0;
        while (done < most) {
            const auto line = nextLine();
            if (!line) break;
            const std::size_t text = line->find_first_not_of(" \t");
            if (text == std::string_view::npos || (*line)[text] == '#') continue;
            if (const std::string wrong = parseElement(*line, source_.type, element); !wrong.empty())
                fail(exitFile, "{}, line {}: {}", source_.path.string(), lineNumber_, wrong);
            element += sizeOf(source_.type);
            ++done;
        }
        return done;
    }

    std::optional<std::uint64_t> count() const override { return std::nullopt; }
    double progress() const override { return source_.progress(); }

private:
    // The next line without its end, valid until the next call.
    std::optional<std::string_view> nextLine() {
        for (;;) {
            const char* begin = buffer_.data() + begin_;
            if (const void* end = std::memchr(begin, '\n', end_ - begin_)) {
                const auto length = static_cast<std::size_t>(static_cast<const char*>(end) - begin);
                begin_ += length + 1;
                return line(begin, length);
            }
            if (atEnd_) {
                if (begin_ == end_) return std::nullopt;
                const std::size_t length = end_ - begin_;
                begin_ = end_;
                return line(begin, length);
            }
            // A line longer than the buffer is no number; most likely the file is no text at all.
            if (begin_ == 0 && end_ == buffer_.size())
                fail(exitFile, "{}, line {}: the line is too long; is this a text file?", source_.path.string(),
                     lineNumber_ + 1);
            std::memmove(buffer_.data(), begin, end_ - begin_);
            end_ -= begin_;
            begin_ = 0;
            const std::size_t got = source_.readBytes(buffer_.data() + end_, buffer_.size() - end_);
            atEnd_ = got == 0;
            end_ += got;
        }
    }

    std::string_view line(const char* begin, std::size_t length) {
        ++lineNumber_;
        std::string_view text(begin, length);
        if (lineNumber_ == 1 && text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
        if (text.ends_with('\r')) text.remove_suffix(1);
        return text;
    }

    Source source_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0, end_ = 0;
    bool atEnd_ = false;
    std::uint64_t lineNumber_ = 0;
};

// A file under a temporary name in the target's directory, removed unless it was committed.
class Target {
public:
    explicit Target(const fs::path& path) : given_(path) {
        std::error_code error;
        path_ = fs::is_symlink(path, error) ? fs::weakly_canonical(path, error) : path;
        if (error) path_ = path;
        const auto status = fs::status(path_, error);
        if (fs::is_directory(status)) fail(exitFile, "cannot write {}: it is a directory", given_.string());
        existed_ = fs::exists(status);
        if (existed_ && !fs::is_regular_file(status))
            fail(exitFile, "cannot write {}: it is not a regular file", given_.string());
        permissions_ = status.permissions();
        for (int attempt = 0;; ++attempt) {
            temporary_ =
                path_.parent_path() / fmt::format(".{}.{}.{}.tmp", path_.filename().string(), getpid(), attempt);
            file_.reset(std::fopen(temporary_.string().c_str(), "wbx"));
            if (file_) break;
            if (errno != EEXIST || attempt == 100) fail(exitFile, "cannot write {}: {}", given_.string(), reason());
        }
    }

    ~Target() {
        file_.reset();
        std::error_code ignored;
        if (!committed_) fs::remove(temporary_, ignored);
    }

    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    void write(const void* from, std::size_t bytes) {
        if (bytes != 0 && std::fwrite(from, 1, bytes, file_.get()) != bytes) failed();
    }

    void writeAtStart(const void* from, std::size_t bytes) {
        if (fseeko(file_.get(), 0, SEEK_SET) != 0) failed();
        write(from, bytes);
    }

    void commit() {
        // Closing the file is the last write: a full disk may show only here.
        if (std::fclose(file_.release()) != 0) failed();
        std::error_code error;
        if (existed_) fs::permissions(temporary_, permissions_, error);
        fs::rename(temporary_, path_, error);
        if (error) fail(exitFile, "cannot write {}: {}", given_.string(), error.message());
        committed_ = true;
    }

private:
    [[noreturn]] void failed() const { fail(exitFile, "cannot write {}: {}", given_.string(), reason()); }

    fs::path given_, path_, temporary_;
    fs::perms permissions_{};
    bool existed_ = false, committed_ = false;
    File file_;
};

class RawWriter : public ArrayWriter {
public:
    RawWriter(const fs::path& path, ElementType type) : target_(path), element_(sizeOf(type)) {}
    void write(const void* from, std::size_t count) override { target_.write(from, count * element_); }
    void commit() override { target_.commit(); }

private:
    Target target_;
    std::size_t element_;
};

class NpyWriter : public ArrayWriter {
public:
    NpyWriter(const fs::path& path, ElementType type, const std::optional<Shape>& shape)
        : target_(path), type_(type), shape_(shape.value_or(Shape{})) {
        // Room for any length of a one-dimensional array, whose header is written over this one at the end.
        const std::size_t room = std::max(header(shape_, 0).size(), header(flat(~std::uint64_t{0}), 0).size());
        headerSize_ = (room + 63) / 64 * 64;
        writeHeader(shape_);
    }

    void write(const void* from, std::size_t count) override {
        target_.write(from, count * sizeOf(type_));
        count_ += count;
    }

    void commit() override {
        std::uint64_t promised = 1;
        for (const std::uint64_t extent : shape_.extents) promised *= extent;
        if (shape_.extents.empty() || promised != count_) {
            const std::string text = header(flat(count_), headerSize_);
            target_.writeAtStart(text.data(), text.size());
        }
        target_.commit();
    }

private:
    static Shape flat(std::uint64_t count) { return Shape{{count}, false}; }

    // The whole header, padded with spaces to the size where one is given.
    std::string header(const Shape& shape, std::size_t size) const {
        std::string text = fmt::format("{{'descr': '{}', 'fortran_order': {}, 'shape': {}, }}", numpyName(type_),
                                       shape.columnsFirst ? "True" : "False", describe(shape));
        const std::size_t before = npyMagic.size() + 4;
        text.resize(std::max(text.size(), size > before ? size - before - 1 : 0), ' ');
        text += '\n';
        std::string whole(npyMagic);
        whole += '\x01';
        whole += '\x00';
        whole += static_cast<char>(text.size() & 0xFF);
        whole += static_cast<char>(text.size() >> 8);
        return whole + text;
    }

    void writeHeader(const Shape& shape) {
        const std::string text = header(shape, headerSize_);
        target_.write(text.data(), text.size());
    }

    Target target_;
    ElementType type_;
    Shape shape_;
    std::size_t headerSize_ = 0;
    std::uint64_t count_ = 0;
};

class CsvWriter : public ArrayWriter {
public:
    CsvWriter(const fs::path& path, ElementType type) : target_(path), type_(type) {}

    void write(const void* from, std::size_t count) override {
        const auto* element = static_cast<const unsigned char*>(from);
        std::string text;
        for (std::size_t i = 0; i < count; ++i, element += sizeOf(type_)) {
            text += formatElement(element, type_);
            text += '\n';
        }
        target_.write(text.data(), text.size());
    }
    void commit() override { target_.commit(); }

private:
    Target target_;
    ElementType type_;
};

}  // namespace

Format formatOf(const fs::path& path) {
    const std::string ending = lowerCase(path.extension().string());
    if (ending == ".npy") return Format::npy;
    if (ending == ".csv" || ending == ".txt") return Format::csv;
    return Format::raw;
}

std::string describe(const Shape& shape) {
    std::string text = "(";
    for (std::size_t i = 0; i < shape.extents.size(); ++i) {
        if (i > 0) text += ", ";
        text += fmt::format("{}", shape.extents[i]);
    }
    return text + (shape.extents.size() == 1 ? ",)" : ")");
}

std::unique_ptr<ArrayReader> openReader(const fs::path& path, Format format, ElementType type) {
    switch (format) {
        case Format::npy: return std::make_unique<NpyReader>(path, type);
        case Format::csv: return std::make_unique<CsvReader>(path, type);
        case Format::raw: break;
    }
    return std::make_unique<RawReader>(path, type);
}

std::unique_ptr<ArrayWriter> openWriter(const fs::path& path, Format format, ElementType type,
                                        const std::optional<Shape>& shape) {
    switch (format) {
        case Format::npy: return std::make_unique<NpyWriter>(path, type, shape);
        case Format::csv: return std::make_unique<CsvWriter>(path, type);
        case Format::raw: break;
    }
    return std::make_unique<RawWriter>(path, type);
}

}  // namespace okt::tool
