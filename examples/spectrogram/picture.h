// A picture of 8-bit colour indices with text, and the PNG file of it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace spectrogram {

// Indices 0 to lastShade are the colour map from weak to strong; behind them stand the colours of the frame.
constexpr int lastShade = 249;
constexpr std::uint8_t paper = 250, ink = 251, faint = 252;

class Picture {
public:
    Picture(int width, int height)
        : width_(width), height_(height), pixels_(static_cast<std::size_t>(width * height), paper) {}

    int width() const { return width_; }
    int height() const { return height_; }
    void set(int x, int y, std::uint8_t colour) {
        if (x >= 0 && x < width_ && y >= 0 && y < height_) pixels_[static_cast<std::size_t>(y * width_ + x)] = colour;
    }
    void fill(int x, int y, int width, int height, std::uint8_t colour);

    // Text whose upper left corner is x, y; `scale` picture points a point of the letters.
    void text(int x, int y, std::string_view text, int scale = 1, std::uint8_t colour = ink);
    // The same, read from bottom to top, with the lower left corner at x, y.
    void textUpwards(int x, int y, std::string_view text, int scale = 1, std::uint8_t colour = ink);

    // Throws std::runtime_error when the file cannot be written.
    void save(const std::string& path) const;

private:
    int width_, height_;
    std::vector<std::uint8_t> pixels_;
};

int textWidth(std::string_view text, int scale = 1);
int textHeight(int scale = 1);

}  // namespace spectrogram
