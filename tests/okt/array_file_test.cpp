#include "array_file.h"

#include "temporary_directory.h"
#include "tool_error.h"

#include <algorithm>
#include <numeric>

namespace okt::tool {
namespace {

class ArrayFile : public TemporaryDirectory {
protected:
    // The whole array, read in pieces of `piece` elements.
    static std::string readAll(const std::string& path, Format format, ElementType type, std::size_t piece = 7) {
        const auto reader = openReader(path, format, type);
        std::string all, buffer(piece * sizeOf(type), '\0');
        while (const std::size_t count = reader->read(buffer.data(), piece))
            all.append(buffer, 0, count * sizeOf(type));
        return all;
    }

    static void writeAll(const std::string& path, Format format, ElementType type, const std::string& bytes,
                         const std::optional<Shape>& shape = std::nullopt, std::size_t piece = 5) {
        const auto writer = openWriter(path, format, type, shape);
        const std::size_t element = sizeOf(type), count = bytes.size() / element;
        for (std::size_t i = 0; i < count; i += piece)
            writer->write(bytes.data() + i * element, std::min(piece, count - i));
        writer->commit();
    }

    // The message of the error that reading gives, which must tell of a file.
    static std::string refusal(const std::string& path, Format format, ElementType type) {
        try {
            readAll(path, format, type);
        } catch (const ToolError& error) {
            EXPECT_EQ(error.code(), exitFile);
            return error.what();
        }
        return "";
    }
};

#define EXPECT_CONTAINS(text, part) EXPECT_NE((text).find(part), std::string::npos) << (text)

TEST_F(ArrayFile, EveryFormatGivesBackEveryBit) {
    std::vector<std::uint64_t> patterns(1000);
    std::uint64_t state = 1;
    for (auto& p : patterns) p = state = state * 6364136223846793005u + 1442695040888963407u;
    patterns[3] = 0x7FF0000000000001;
    const std::string data = bytes(patterns);
    for (const ElementType type :
         {ElementType::Real32, ElementType::Real64, ElementType::Complex32, ElementType::Complex64})
        for (const Format format : {Format::npy, Format::raw, Format::csv}) {
            writeAll(path("array"), format, type, data);
            EXPECT_EQ(readAll(path("array"), format, type), data) << static_cast<int>(type) << static_cast<int>(format);
        }
}

TEST_F(ArrayFile, FormatsFollowTheEndingOfTheName) {
    EXPECT_EQ(formatOf("a.npy"), Format::npy);
    EXPECT_EQ(formatOf("dir.npy/a.CSV"), Format::csv);
    EXPECT_EQ(formatOf("a.txt"), Format::csv);
    EXPECT_EQ(formatOf("a.f64"), Format::raw);
    EXPECT_EQ(formatOf("a"), Format::raw);
}

TEST_F(ArrayFile, EmptyArraysAreArrays) {
    for (const Format format : {Format::npy, Format::raw, Format::csv}) {
        writeAll(path("empty"), format, ElementType::Real64, "");
        EXPECT_EQ(readAll(path("empty"), format, ElementType::Real64), "");
    }
    writeAll(path("empty.npy"), Format::npy, ElementType::Real64, "");
    EXPECT_CONTAINS(get("empty.npy"), "'shape': (0,)");
}

TEST_F(ArrayFile, NpyKeepsShapeAndOrder) {
    const std::string data = bytes(std::vector<double>{1, 2, 3, 4, 5, 6});
    const auto in = put("in.npy", npy(npyHeader("<f8", "(2, 3)", true), data));
    const auto reader = openReader(in, Format::npy, ElementType::Real64);
    ASSERT_TRUE(reader->shape().has_value());
    EXPECT_EQ(*reader->shape(), (Shape{{2, 3}, true}));
    EXPECT_EQ(reader->count(), 6u);
    writeAll(path("out.npy"), Format::npy, ElementType::Real64, data, reader->shape());
    EXPECT_CONTAINS(get("out.npy"), "{'descr': '<f8', 'fortran_order': True, 'shape': (2, 3), }");
}

TEST_F(ArrayFile, NpyHeadersOfEveryVersionAndSpacingAreRead) {
    const std::string data = bytes(std::vector<float>{1, 2});
    EXPECT_EQ(readAll(put("a", npy("{\"shape\":(2,),\"fortran_order\":False,\"descr\":\"<f4\"}", data)), Format::npy,
                      ElementType::Real32),
              data);
    // Old versions wrote the length as a long integer.
    EXPECT_EQ(readAll(put("b", npy(npyHeader("<f4", "(2L,)"), data)), Format::npy, ElementType::Real32), data);
    const std::string header = npyHeader("<f4", "(1, 2)") + "\n";
    std::string version2("\x93NUMPY\x02\x00", 8);
    version2 += static_cast<char>(header.size());
    version2 += std::string(3, '\0') + header + data;
    EXPECT_EQ(readAll(put("c", version2), Format::npy, ElementType::Real32), data);
}

TEST_F(ArrayFile, NpyLengthOfAStreamIsWrittenAtTheEnd) {
    // Without a shape the length is known at the end only, whatever its number of digits.
    for (const std::size_t count : {1u, 9u, 12345u}) {
        const std::string data(count * sizeof(double), '\0');
        writeAll(path("a.npy"), Format::npy, ElementType::Real64, data);
        const auto reader = openReader(path("a.npy"), Format::npy, ElementType::Real64);
        EXPECT_EQ(reader->count(), count);
        EXPECT_EQ((get("a.npy").size() - data.size()) % 64, 0u);
    }
}

TEST_F(ArrayFile, NpyOfAnotherTypeIsRefused) {
    const auto real = put("a.npy", npy(npyHeader("<f8", "(1,)"), std::string(8, '\0')));
    EXPECT_CONTAINS(refusal(real, Format::npy, ElementType::Real32), "'<f8', but Real32 ('<f4') is expected");
    EXPECT_CONTAINS(refusal(real, Format::npy, ElementType::Complex32), "Complex32");
    const auto bigEndian = put("b.npy", npy(npyHeader(">f8", "(1,)"), std::string(8, '\0')));
    EXPECT_CONTAINS(refusal(bigEndian, Format::npy, ElementType::Real64), "'>f8'");
}

TEST_F(ArrayFile, TruncatedNpyIsRefusedWhereverItEnds) {
    const std::string whole = npy(npyHeader("<f8", "(3,)"), std::string(24, 'x'));
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_NE(refusal(put("a.npy", whole.substr(0, size)), Format::npy, ElementType::Real64), "") << size;
    EXPECT_CONTAINS(refusal(put("a.npy", whole.substr(0, whole.size() - 1)), Format::npy, ElementType::Real64),
                    "is truncated: its header promises 3 elements (24 bytes), and 23 bytes follow");
    EXPECT_CONTAINS(refusal(put("a.npy", whole + "y"), Format::npy, ElementType::Real64),
                    "1 bytes behind the 3 elements");
    EXPECT_EQ(refusal(put("a.npy", whole), Format::npy, ElementType::Real64), "");
}

TEST_F(ArrayFile, MalformedNpyHeadersAreRefused) {
    const std::string data(8, '\0');
    for (const std::string header :
         {"", "{}", "{'descr': '<f8'}", "{'descr': '<f8', 'fortran_order': False, 'shape': (1,), 'more': 1, }",
          "{'descr': [('a', '<f8')], 'fortran_order': False, 'shape': (1,), }",
          "{'descr': '<f8', 'fortran_order': Maybe, 'shape': (1,), }",
          "{'descr': '<f8', 'fortran_order': False, 'shape': (-1,), }",
          "{'descr': '<f8', 'fortran_order': False, 'shape': (1",
          "{'descr': '<f8', 'fortran_order': False, 'shape': 1, }",
          "{'descr': '<f8', 'fortran_order': False, 'shape': (1,), } rest", "{'descr': '<f8"})
        EXPECT_CONTAINS(refusal(put("a.npy", npy(header, data)), Format::npy, ElementType::Real64), "header");
    EXPECT_CONTAINS(refusal(put("a.npy", npy(npyHeader("<f8", "(4294967296, 4294967296, 4294967296)"), data)),
                            Format::npy, ElementType::Real64),
                    "impossible number");
    EXPECT_CONTAINS(refusal(put("a.npy", "1,2,3\n4,5,6\n7,8,9\n"), Format::npy, ElementType::Real64),
                    "is no .npy file");
    std::string later = npy(npyHeader("<f8", "(1,)"), data);
    later[6] = 9;
    EXPECT_CONTAINS(refusal(put("a.npy", later), Format::npy, ElementType::Real64), "version 9.0");
}

TEST_F(ArrayFile, RawFilesHoldWholeElements) {
    const auto file = put("a.raw", std::string(20, 'x'));
    EXPECT_EQ(openReader(file, Format::raw, ElementType::Real32)->count(), 5u);
    EXPECT_CONTAINS(refusal(file, Format::raw, ElementType::Real64),
                    "20 bytes, which is no whole number of Real64 elements");
}

TEST_F(ArrayFile, CsvPassesOverCommentsAndEmptyLines) {
    const std::string text = "\xEF\xBB\xBF# values\r\n1\r\n\n  \n 2.5 \n#3\n-inf";
    const auto all = values<double>(readAll(put("a.csv", text), Format::csv, ElementType::Real64, 2));
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0], 1);
    EXPECT_EQ(all[1], 2.5);
    EXPECT_EQ(all[2], -std::numeric_limits<double>::infinity());
}

TEST_F(ArrayFile, CsvErrorsNameTheLine) {
    EXPECT_CONTAINS(refusal(put("a.csv", "1\n\n2x\n"), Format::csv, ElementType::Real64),
                    "line 3: '2x' is not a number");
    EXPECT_CONTAINS(refusal(put("a.csv", "1,2\n"), Format::csv, ElementType::Real64), "line 1");
    EXPECT_CONTAINS(refusal(put("a.csv", "1,2\n3\n"), Format::csv, ElementType::Complex64), "line 2");
    EXPECT_CONTAINS(refusal(put("a.csv", std::string(200000, '1')), Format::csv, ElementType::Real64), "too long");
}

TEST_F(ArrayFile, CsvLinesMayLieAcrossTheReadersBuffer) {
    std::string text;
    std::vector<double> expected;
    for (int i = 0; i < 30000; ++i) {
        text += std::to_string(i) + ".25\n";
        expected.push_back(i + 0.25);
    }
    EXPECT_EQ(readAll(put("a.csv", text), Format::csv, ElementType::Real64, 1000), bytes(expected));
}

TEST_F(ArrayFile, WhatCannotBeReadIsRefused) {
    EXPECT_CONTAINS(refusal(path("missing.npy"), Format::npy, ElementType::Real64), "cannot read");
    EXPECT_CONTAINS(refusal(directory_.string(), Format::raw, ElementType::Real64), "is a directory");
}

TEST_F(ArrayFile, AnUncommittedFileLeavesNothingAndChangesNothing) {
    put("a.raw", "before");
    {
        const auto writer = openWriter(path("a.raw"), Format::raw, ElementType::Real64, std::nullopt);
        const double value = 1;
        writer->write(&value, 1);
    }
    EXPECT_EQ(get("a.raw"), "before");
    EXPECT_EQ(names(), std::vector<std::string>{"a.raw"});
}

TEST_F(ArrayFile, ACommittedFileReplacesTheOldOneAndKeepsItsPermissions) {
    put("a.raw", "before");
    std::filesystem::permissions(path("a.raw"),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    writeAll(path("a.raw"), Format::raw, ElementType::Real32, "abcd");
    EXPECT_EQ(get("a.raw"), "abcd");
    EXPECT_EQ(std::filesystem::status(path("a.raw")).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    EXPECT_EQ(names(), std::vector<std::string>{"a.raw"});
}

TEST_F(ArrayFile, ALinkStaysALink) {
    put("target.raw", "before");
    std::filesystem::create_symlink("target.raw", path("link.raw"));
    writeAll(path("link.raw"), Format::raw, ElementType::Real32, "abcd");
    EXPECT_TRUE(std::filesystem::is_symlink(path("link.raw")));
    EXPECT_EQ(get("target.raw"), "abcd");
}

TEST_F(ArrayFile, WhatCannotBeWrittenIsRefused) {
    for (const std::string& target : {path("no/such/directory/a.raw"), directory_.string(), std::string("/dev/null")}) {
        try {
            openWriter(target, Format::raw, ElementType::Real64, std::nullopt);
            ADD_FAILURE() << target;
        } catch (const ToolError& error) {
            EXPECT_EQ(error.code(), exitFile);
            EXPECT_CONTAINS(std::string(error.what()), "cannot write " + target);
        }
    }
}

}  // namespace
}  // namespace okt::tool
