// Spectrogram of a recording: windows of the signal are transformed with FFTW, and one call each of the library turns
// all coefficients of all windows into magnitudes, decibels and phases.
//
//   spectrogram RECORDING [--out DIRECTORY]     a sound file that libsndfile reads
//   spectrogram --synthetic [--out DIRECTORY]   a made-up signal: gliding tones with overtones, and a click
//
// Writes magnitudes.npy, decibels.npy, phases.npy (windows by frequencies) and spectrogram.png.
#include "picture.h"

#include <oktvm.h>
#include <registry.h>

#include <fftw3.h>
#include <sndfile.h>

#include <algorithm>
#include <bit>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <limits>
#include <memory>
#include <numbers>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Signal {
    std::string name;
    double rate = 0;  // samples a second
    std::vector<double> samples;
};

Signal readRecording(const std::string& path) {
    SF_INFO info{};
    const std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(sf_open(path.c_str(), SFM_READ, &info), sf_close);
    if (!file) throw std::runtime_error(path + ": " + sf_strerror(nullptr));
    const auto channels = static_cast<std::size_t>(info.channels);
    std::vector<double> frames(static_cast<std::size_t>(info.frames) * channels);
    const sf_count_t read = sf_readf_double(file.get(), frames.data(), info.frames);
    if (read != info.frames) throw std::runtime_error(path + " is truncated");

    Signal signal{fs::path(path).filename().string(), static_cast<double>(info.samplerate), {}};
    for (std::size_t i = 0; i < frames.size(); i += channels) {
        double sum = 0;
        for (std::size_t c = 0; c < channels; ++c) sum += frames[i + c];
        signal.samples.push_back(sum / static_cast<double>(channels));
    }
    return signal;
}

// Two gliding tones with overtones, one up and one in waves, and a click in the middle.
Signal syntheticSignal() {
    Signal signal{"gliding tones", 48000, {}};
    const std::size_t count = 96000;
    double phase1 = 0, phase2 = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const double t = static_cast<double>(i) / signal.rate;
        phase1 += 2 * std::numbers::pi * 200 * std::exp2(2.2 * t) / signal.rate;
        phase2 += 2 * std::numbers::pi * (6500 + 1800 * std::sin(2 * std::numbers::pi * 1.5 * t)) / signal.rate;
        double sample = 0.15 * std::sin(phase2) * (0.6 + 0.4 * std::cos(2 * std::numbers::pi * 3 * t));
        for (int overtone = 1; overtone <= 8; ++overtone)
            sample += 0.4 * std::sin(overtone * phase1) / (overtone * overtone);
        if (i == count / 2) sample += 0.9;
        signal.samples.push_back(sample);
    }
    return signal;
}

struct Spectrum {
    std::size_t windows = 0, bins = 0, size = 0, hop = 0;
    std::vector<Complex64> coefficients;  // windows by bins
};

Spectrum transform(const Signal& signal) {
    Spectrum s;
    s.size = 1024;
    s.hop = 128;
    s.bins = s.size / 2 + 1;
    if (signal.samples.size() < s.size) throw std::runtime_error("the recording is shorter than one window");
    s.windows = (signal.samples.size() - s.size) / s.hop + 1;
    if (s.windows * s.bins > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        throw std::runtime_error("the recording is too long for one call");

    std::vector<double> hann(s.size);
    for (std::size_t i = 0; i < s.size; ++i)
        hann[i] = 0.5 - 0.5 * std::cos(2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(s.size));
    std::vector<double> windows(s.windows * s.size);
    s.coefficients.resize(s.windows * s.bins);

    const int size = static_cast<int>(s.size), bins = static_cast<int>(s.bins), count = static_cast<int>(s.windows);
    fftw_plan plan =
        fftw_plan_many_dft_r2c(1, &size, count, windows.data(), nullptr, 1, size,
                               reinterpret_cast<fftw_complex*>(s.coefficients.data()), nullptr, 1, bins, FFTW_ESTIMATE);
    if (!plan) throw std::runtime_error("FFTW has no plan for this size");
    for (std::size_t w = 0; w < s.windows; ++w)
        for (std::size_t i = 0; i < s.size; ++i) windows[w * s.size + i] = hann[i] * signal.samples[w * s.hop + i];
    fftw_execute(plan);
    fftw_destroy_plan(plan);
    return s;
}

// What one call of the library did, beside the plain loop that computes the same.
struct Call {
    OktStatus status = oktStatusOk;
    double milliseconds = 0, loopMilliseconds = 0;
    std::uint64_t largestDifference = 0;  // in units of the last place
    std::size_t differing = 0;
};

std::uint64_t ulpsBetween(double a, double b) {
    const auto ordered = [](double v) {
        const auto bits = std::bit_cast<std::int64_t>(v);
        return bits < 0 ? std::numeric_limits<std::int64_t>::min() - bits : bits;
    };
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b) ? 0 : ~std::uint64_t{0};
    const std::int64_t x = ordered(a), y = ordered(b);
    return static_cast<std::uint64_t>(x > y ? x : y) - static_cast<std::uint64_t>(x > y ? y : x);
}

// Computes into `result` with one call, and into a second array with the loop; both take turns for the times.
Call compare(std::vector<double>& result, const std::function<OktStatus(double*, std::int32_t)>& call,
             const std::function<void(double*)>& loop) {
    using Clock = std::chrono::steady_clock;
    const auto milliseconds = [](Clock::duration d) { return std::chrono::duration<double, std::milli>(d).count(); };
    Call c;
    std::vector<double> plain(result.size());
    c.milliseconds = c.loopMilliseconds = std::numeric_limits<double>::infinity();
    for (int turn = 0; turn < 25; ++turn) {
        const auto start = Clock::now();
        c.status = call(result.data(), static_cast<std::int32_t>(result.size()));
        const auto between = Clock::now();
        loop(plain.data());
        const auto end = Clock::now();
        c.milliseconds = std::min(c.milliseconds, milliseconds(between - start));
        c.loopMilliseconds = std::min(c.loopMilliseconds, milliseconds(end - between));
    }
    for (std::size_t i = 0; i < result.size(); ++i) {
        const std::uint64_t difference = ulpsBetween(result[i], plain[i]);
        c.largestDifference = std::max(c.largestDifference, difference);
        c.differing += difference != 0;
    }
    return c;
}

void print(const char* name, const char* loop, std::size_t count, const Call& c) {
    std::printf("%s of %zu elements: status %d (%s)\n", name, count, c.status,
                std::string(okt::statusName(c.status)).c_str());
    std::printf("  one call %.2f ms, the loop over %s %.2f ms: %.2f times as fast\n", c.milliseconds, loop,
                c.loopMilliseconds, c.loopMilliseconds / c.milliseconds);
    std::printf("  largest difference to the loop %llu ulp, in %zu elements\n",
                static_cast<unsigned long long>(c.largestDifference), c.differing);
}

void writeNpy(const fs::path& path, const std::vector<double>& values, std::size_t rows, std::size_t columns) {
    std::string header = "{'descr': '<f8', 'fortran_order': False, 'shape': (" + std::to_string(rows) + ", " +
                         std::to_string(columns) + "), }";
    header.resize((header.size() + 10) / 64 * 64 + 53, ' ');
    header += '\n';
    const unsigned char start[] = {0x93,
                                   'N',
                                   'U',
                                   'M',
                                   'P',
                                   'Y',
                                   1,
                                   0,
                                   static_cast<unsigned char>(header.size() & 0xFF),
                                   static_cast<unsigned char>(header.size() >> 8)};
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.string().c_str(), "wb"), std::fclose);
    if (!file || std::fwrite(start, 1, sizeof start, file.get()) != sizeof start ||
        std::fwrite(header.data(), 1, header.size(), file.get()) != header.size() ||
        std::fwrite(values.data(), sizeof(double), values.size(), file.get()) != values.size() ||
        std::fflush(file.get()) != 0)
        throw std::runtime_error("cannot write " + path.string());
}

// A step of 1, 2 or 5 times a power of ten that divides the range into some four to eight parts.
double tickStep(double range) {
    const double power = std::pow(10, std::floor(std::log10(range / 4)));
    for (const double step : {5.0, 2.0, 1.0})
        if (range / (step * power) >= 4) return step * power;
    return power;
}

std::string number(double value, double step) {
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", step < 0.1 ? 2 : step < 1 ? 1 : 0, value);
    return text;
}

// Time to the right, frequency upwards, level as colour with its scale at the side.
spectrogram::Picture draw(const Signal& signal, const Spectrum& s, const std::vector<double>& decibels) {
    using namespace spectrogram;
    const double range = 80;  // decibels from the strongest level down to black
    const double strongest = *std::ranges::max_element(decibels);
    const double topFrequency = std::min(signal.rate / 2, 12000.0);
    const double seconds = static_cast<double>((s.windows - 1) * s.hop + s.size) / signal.rate;

    const int width = 860, height = 400, left = 74, top = 40, right = 96, bottom = 62, text = 2;
    Picture picture(left + width + right, top + height + bottom);
    const auto shadeOf = [&](double level) {
        const double t = std::clamp(1 + (level - strongest) / range, 0.0, 1.0);
        return static_cast<std::uint8_t>(std::lround(t * lastShade));
    };

    for (int x = 0; x < width; ++x) {
        // The window whose middle lies nearest.
        const double time = (x + 0.5) / width * seconds;
        const double at = (time * signal.rate - static_cast<double>(s.size) / 2) / static_cast<double>(s.hop);
        const auto w = static_cast<std::size_t>(std::clamp(std::lround(at), 0L, static_cast<long>(s.windows) - 1));
        for (int y = 0; y < height; ++y) {
            const double frequency = (height - 0.5 - y) / height * topFrequency;
            const double bin =
                std::min(frequency / signal.rate * static_cast<double>(s.size), static_cast<double>(s.bins - 1));
            const auto below = static_cast<std::size_t>(bin);
            const std::size_t above = std::min(below + 1, s.bins - 1);
            const double part = bin - static_cast<double>(below);
            const double level = decibels[w * s.bins + below] * (1 - part) + decibels[w * s.bins + above] * part;
            picture.set(left + x, top + y, shadeOf(level));
        }
    }

    picture.fill(left - 1, top - 1, width + 2, 1, faint);
    picture.fill(left - 1, top + height, width + 2, 1, ink);
    picture.fill(left - 1, top - 1, 1, height + 2, ink);
    picture.fill(left + width, top - 1, 1, height + 2, faint);

    picture.text(left, 12, signal.name + ": level over time and frequency", text);
    const double timeStep = tickStep(seconds);
    for (double t = 0; t <= seconds * (1 + 1e-9); t += timeStep) {
        const int x = left + static_cast<int>(std::lround(t / seconds * width));
        picture.fill(x, top + height, 1, 6, ink);
        const std::string label = number(t, timeStep);
        picture.text(x - textWidth(label, text) / 2, top + height + 10, label, text);
    }
    const std::string timeLabel = "Time (s)", frequencyLabel = "Frequency (kHz)", levelLabel = "dB";
    picture.text(left + (width - textWidth(timeLabel, text)) / 2, top + height + 36, timeLabel, text);

    const double kilohertz = topFrequency / 1000, frequencyStep = tickStep(kilohertz);
    for (double f = 0; f <= kilohertz * (1 + 1e-9); f += frequencyStep) {
        const int y = top + height - static_cast<int>(std::lround(f / kilohertz * height));
        picture.fill(left - 6, y, 6, 1, ink);
        const std::string label = number(f, frequencyStep);
        picture.text(left - 10 - textWidth(label, text), y - 7, label, text);
    }
    picture.textUpwards(8, top + (height + textWidth(frequencyLabel, text)) / 2, frequencyLabel, text);

    const int barX = left + width + 16, barWidth = 16;
    for (int y = 0; y < height; ++y)
        picture.fill(barX, top + y, barWidth, 1, shadeOf(strongest - range * (y + 0.5) / height));
    for (int level = 0; level >= -range; level -= 20) {
        const int y = top + static_cast<int>(std::lround(-level / range * height));
        picture.fill(barX + barWidth, y, 3, 1, ink);
        picture.text(barX + barWidth + 10, std::min(y - 7, top + height - 12), std::to_string(level), text);
    }
    picture.text(barX, top - 22, levelLabel, text);
    return picture;
}

int run(const std::string& input, const fs::path& output) {
    const Signal signal = input == "--synthetic" ? syntheticSignal() : readRecording(input);
    const Spectrum s = transform(signal);
    const std::size_t count = s.coefficients.size();
    std::printf("%s: %.2f s at %.0f Hz, %zu windows of %zu samples\n", signal.name.c_str(),
                static_cast<double>(signal.samples.size()) / signal.rate, signal.rate, s.windows, s.size);

    // All magnitudes of all windows.
    std::vector<double> magnitudes(count);
    const Call abs = compare(
        magnitudes, [&](double* to, std::int32_t len) { return oktsAbs_64fc_A53(s.coefficients.data(), to, len); },
        [&](double* to) {
            for (std::size_t i = 0; i < count; ++i) to[i] = std::hypot(s.coefficients[i].re, s.coefficients[i].im);
        });
    print("oktsAbs_64fc_A53", "hypot", count, abs);
    if (abs.status < 0) throw std::runtime_error("the library refused the call");

    // Levels: 20 times the decimal logarithm. Silence is lifted to a level far below what is drawn.
    std::vector<double> decibels(count), floored(count);
    for (std::size_t i = 0; i < count; ++i) floored[i] = std::max(magnitudes[i], 1e-12);
    if (const okt::Export* log10 = okt::findExport("oktsLog10_64f_A53")) {
        const Call c = compare(
            decibels,
            [&](double* to, std::int32_t len) { return log10->call({.src1 = floored.data(), .dst1 = to, .len = len}); },
            [&](double* to) {
                for (std::size_t i = 0; i < count; ++i) to[i] = std::log10(floored[i]);
            });
        print("oktsLog10_64f_A53", "log10", count, c);
    } else {
        for (std::size_t i = 0; i < count; ++i) decibels[i] = std::log10(floored[i]);
    }
    for (double& level : decibels) level *= 20;

    fs::create_directories(output);
    if (const okt::Export* arg = okt::findExport("oktsArg_64fc_A53")) {
        std::vector<double> phases(count);
        const Call c = compare(
            phases,
            [&](double* to, std::int32_t len) {
                return arg->call({.src1 = s.coefficients.data(), .dst1 = to, .len = len});
            },
            [&](double* to) {
                for (std::size_t i = 0; i < count; ++i) to[i] = std::atan2(s.coefficients[i].im, s.coefficients[i].re);
            });
        print("oktsArg_64fc_A53", "atan2", count, c);
        writeNpy(output / "phases.npy", phases, s.windows, s.bins);
    }
    writeNpy(output / "magnitudes.npy", magnitudes, s.windows, s.bins);
    writeNpy(output / "decibels.npy", decibels, s.windows, s.bins);
    draw(signal, s, decibels).save((output / "spectrogram.png").string());
    std::printf("wrote arrays of %zu by %zu and spectrogram.png to %s\n", s.windows, s.bins, output.string().c_str());
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    std::string input, output = ".";
    bool understood = true;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--out" && i + 1 < arguments.size())
            output = arguments[++i];
        else if (input.empty() && (arguments[i] == "--synthetic" || !arguments[i].starts_with('-')))
            input = arguments[i];
        else
            understood = false;
    }
    if (input.empty() || !understood) {
        std::fprintf(stderr, "usage: spectrogram RECORDING|--synthetic [--out DIRECTORY]\n");
        return 2;
    }
    try {
        return run(input, output);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "spectrogram: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
