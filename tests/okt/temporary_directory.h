// A directory of its own for each test, with files put in and read back as bytes.
#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace okt::tool {

class TemporaryDirectory : public testing::Test {
protected:
    void SetUp() override {
        std::string name = (std::filesystem::temp_directory_path() / "okt-test-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        directory_ = name;
    }
    void TearDown() override {
        std::error_code ignored;
        std::filesystem::remove_all(directory_, ignored);
    }

    std::string path(const std::string& name) const { return (directory_ / name).string(); }

    std::string put(const std::string& name, const std::string& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }
    std::string get(const std::string& name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const auto& entry : std::filesystem::directory_iterator(directory_))
            all.push_back(entry.path().filename().string());
        return all;
    }

    template <class T>
    static std::string bytes(const std::vector<T>& values) {
        return {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(T)};
    }
    template <class T>
    static std::vector<T> values(const std::string& bytes) {
        std::vector<T> all(bytes.size() / sizeof(T));
        std::memcpy(all.data(), bytes.data(), all.size() * sizeof(T));
        return all;
    }

    // A .npy file of version 1 with the header text as given.
    static std::string npy(std::string header, const std::string& data) {
        header.resize((header.size() + 10) / 64 * 64 + 53, ' ');
        header += '\n';
        std::string file("\x93NUMPY\x01\x00", 8);
        file += static_cast<char>(header.size() & 0xFF);
        file += static_cast<char>(header.size() >> 8);
        return file + header + data;
    }
    static std::string npyHeader(const std::string& descr, const std::string& shape, bool columnsFirst = false) {
        return "{'descr': '" + descr + "', 'fortran_order': " + (columnsFirst ? "True" : "False") +
               ", 'shape': " + shape + ", }";
    }

    std::filesystem::path directory_;
};

}  // namespace okt::tool
