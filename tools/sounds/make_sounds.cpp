// Generates the short sound effects that accompany the game's message windows.
//
// Usage: make_sounds <output-directory>
//
// Everything is synthesised from scratch with the standard library only, so the
// sounds can be rebuilt on any machine without an audio toolchain. The output is
// deterministic: no clocks, no std::random_device and no library distributions
// (whose results differ between standard library implementations); the noise
// comes from a tiny fixed-seed generator defined here.
//
// Format: mono, 16-bit PCM, 22050 Hz, plain RIFF/WAVE with a 16-byte "fmt "
// chunk followed by "data" - the most widely readable form there is.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <numbers>
#include <span>
#include <string>
#include <vector>

namespace {

constexpr int kRate = 22050;
constexpr double kPi = std::numbers::pi;
constexpr double kTwoPi = 2.0 * std::numbers::pi;
// Highest partial we are willing to synthesise; keeps well clear of Nyquist
// so nothing folds back as an inharmonic whistle.
constexpr double kMaxPartialHz = 10000.0;
// Peak level of every file: -3 dBFS leaves headroom for players that mix
// several sounds or resample, and keeps all five at the same loudness ceiling.
const double kPeak = std::pow(10.0, -3.0 / 20.0);

using Buffer = std::vector<double>;

std::size_t toSamples(double seconds) {
    return static_cast<std::size_t>(std::lround(seconds * kRate));
}

// Raised-cosine ramp 0 -> 1 over [0, 1]; smooth at both ends, so fades made
// from it cannot produce an audible click.
double smoothStep(double x) {
    if (x <= 0.0) return 0.0;
    if (x >= 1.0) return 1.0;
    return 0.5 - 0.5 * std::cos(kPi * x);
}

// Attack/release gate for a note of the given length.
double gate(double t, double length, double attack, double release) {
    if (t < 0.0 || t >= length) return 0.0;
    return smoothStep(t / attack) * smoothStep((length - t) / release);
}

void ensureLength(Buffer& buf, std::size_t n) {
    if (buf.size() < n) buf.resize(n, 0.0);
}

// --- mallet / bell tones --------------------------------------------------

struct Partial {
    double ratio;  // frequency relative to the fundamental
    double gain;
    double decay;  // exponential decay rate in 1/s; upper partials die faster
};

// A struck tone: very short soft attack, independent exponential decay per
// partial, and a final taper so the note reaches exact silence.
void addStruck(Buffer& buf, double start, double freq, double gain, double length,
               std::span<const Partial> partials) {
    const std::size_t first = toSamples(start);
    const std::size_t count = toSamples(length);
    ensureLength(buf, first + count);
    constexpr double kAttack = 0.006;  // soft enough to avoid a tick, short enough to sound struck
    const double release = std::min(0.08, length * 0.5);
    for (std::size_t i = 0; i < count; ++i) {
        const double t = static_cast<double>(i) / kRate;
        double s = 0.0;
        for (const Partial& p : partials) {
            const double f = freq * p.ratio;
            if (f >= kMaxPartialHz) continue;
            s += p.gain * std::exp(-p.decay * t) * std::sin(kTwoPi * f * t);
        }
        buf[first + i] += gain * gate(t, length, kAttack, release) * s;
    }
}

// --- sustained harmonic voices ---------------------------------------------

struct Voice {
    double freq;
    double glideTo;  // end frequency (equal to freq for a steady pitch)
    double gain;
    double brightness;  // larger = more upper harmonics
    double rolloff;     // spectral slope exponent, 1 = sawtooth-like
    double attack;
    double release;
    double decay;  // slow overall fade while the note sounds, 1/s
    double vibratoHz;
    double vibratoDepth;  // relative frequency deviation at full depth
    double vibratoDelay;  // vibrato fades in after this many seconds
};

// A band-limited additive voice. The phase is integrated per harmonic so that
// glides and vibrato stay continuous.
void addVoice(Buffer& buf, double start, double length, const Voice& v) {
    const std::size_t first = toSamples(start);
    const std::size_t count = toSamples(length);
    ensureLength(buf, first + count);
    const int harmonics =
        std::max(1, static_cast<int>(kMaxPartialHz / std::max(v.freq, v.glideTo)));
    std::vector<double> weight(static_cast<std::size_t>(harmonics));
    for (int n = 1; n <= harmonics; ++n) {
        weight[static_cast<std::size_t>(n - 1)] =
            std::pow(static_cast<double>(n), -v.rolloff) * std::exp(-(n - 1) / v.brightness);
    }
    double phase = 0.0;  // phase of the fundamental in cycles
    for (std::size_t i = 0; i < count; ++i) {
        const double t = static_cast<double>(i) / kRate;
        const double u = t / length;
        // Exponential glide sounds like an even pitch slide to the ear.
        double f = v.freq * std::pow(v.glideTo / v.freq, u);
        const double vibAmount = smoothStep((t - v.vibratoDelay) / 0.15);
        f *= 1.0 + v.vibratoDepth * vibAmount * std::sin(kTwoPi * v.vibratoHz * t);
        phase += f / kRate;
        phase -= std::floor(phase);
        double s = 0.0;
        for (int n = 1; n <= harmonics; ++n) {
            s += weight[static_cast<std::size_t>(n - 1)] * std::sin(kTwoPi * n * phase);
        }
        buf[first + i] +=
            v.gain * std::exp(-v.decay * t) * gate(t, length, v.attack, v.release) * s;
    }
}

// --- noise ------------------------------------------------------------------

// xorshift32: tiny, fast and identical on every platform.
class Noise {
public:
    explicit Noise(std::uint32_t seed) : state_(seed != 0 ? seed : 1u) {}
    double next() {  // uniform in [-1, 1)
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return static_cast<double>(state_ >> 8) * (2.0 / 16777216.0) - 1.0;
    }

private:
    std::uint32_t state_;
};

// Topology-preserving state-variable band-pass. Unlike the classic Chamberlin
// form it stays stable at any centre frequency, which matters for a sweep.
class BandPass {
public:
    double process(double x, double centreHz, double q) {
        const double g = std::tan(kPi * centreHz / kRate);
        const double k = 1.0 / q;
        const double a1 = 1.0 / (1.0 + g * (g + k));
        const double a2 = g * a1;
        const double a3 = g * a2;
        const double v3 = x - ic2_;
        const double v1 = a1 * ic1_ + a2 * v3;
        const double v2 = ic2_ + a2 * ic1_ + a3 * v3;
        ic1_ = 2.0 * v1 - ic1_;
        ic2_ = 2.0 * v2 - ic2_;
        return k * v1;  // scaled to unity gain at the centre frequency
    }

private:
    double ic1_ = 0.0;
    double ic2_ = 0.0;
};

// --- finishing and output ------------------------------------------------

// Scale to the common peak level and guarantee the first and last samples
// are exactly zero, so playback never starts or stops with a click.
void finish(Buffer& buf) {
    const std::size_t edge = std::min(buf.size() / 2, toSamples(0.004));
    for (std::size_t i = 0; i < edge; ++i) {
        const double g = smoothStep(static_cast<double>(i) / static_cast<double>(edge));
        buf[i] *= g;
        buf[buf.size() - 1 - i] *= g;
    }
    double peak = 0.0;
    for (double s : buf) peak = std::max(peak, std::abs(s));
    if (peak > 0.0) {
        const double scale = kPeak / peak;
        for (double& s : buf) s *= scale;
    }
}

void putLE(std::vector<unsigned char>& out, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        out.push_back(static_cast<unsigned char>((value >> (8 * i)) & 0xFFu));
}

void putTag(std::vector<unsigned char>& out, const char (&tag)[5]) {
    for (int i = 0; i < 4; ++i) out.push_back(static_cast<unsigned char>(tag[i]));
}

// Writes the canonical 44-byte header followed by the samples, byte by byte in
// little-endian order so the file is the same regardless of the host.
bool writeWav(const std::filesystem::path& path, const Buffer& buf) {
    constexpr std::uint32_t kChannels = 1;
    constexpr std::uint32_t kBits = 16;
    constexpr std::uint32_t kBlockAlign = kChannels * kBits / 8;
    const auto dataBytes = static_cast<std::uint32_t>(buf.size() * kBlockAlign);

    std::vector<unsigned char> out;
    out.reserve(44 + dataBytes);
    putTag(out, "RIFF");
    putLE(out, 36 + dataBytes, 4);
    putTag(out, "WAVE");
    putTag(out, "fmt ");
    putLE(out, 16, 4);  // fmt chunk size
    putLE(out, 1, 2);   // PCM
    putLE(out, kChannels, 2);
    putLE(out, kRate, 4);
    putLE(out, kRate * kBlockAlign, 4);  // byte rate
    putLE(out, kBlockAlign, 2);
    putLE(out, kBits, 2);
    putTag(out, "data");
    putLE(out, dataBytes, 4);
    for (double s : buf) {
        const long q = std::clamp(std::lround(s * 32767.0), -32768L, 32767L);
        putLE(out, static_cast<std::uint32_t>(static_cast<std::int32_t>(q)) & 0xFFFFu, 2);
    }

    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file) return false;
    file.write(reinterpret_cast<const char*>(out.data()), static_cast<std::streamsize>(out.size()));
    return static_cast<bool>(file);
}

// --- the individual sounds ------------------------------------------------

// Welcome: three marimba-like notes climbing a major triad. The 4x and 10x
// partials are what a tuned wooden bar adds; they fade quickly, leaving a warm
// fundamental.
Buffer makeStart() {
    static constexpr std::array<Partial, 3> marimba{{
        {1.0, 1.0, 5.0},
        {4.0, 0.28, 18.0},
        {10.0, 0.05, 40.0},
    }};
    Buffer buf;
    const std::array<double, 3> notes{523.25, 659.26, 783.99};  // C5 E5 G5
    for (std::size_t i = 0; i < notes.size(); ++i) {
        // The last note rings a little longer so the phrase feels finished.
        const double length = i + 1 == notes.size() ? 0.62 : 0.40;
        addStruck(buf, 0.11 * static_cast<double>(i), notes[i], 1.0, length, marimba);
    }
    finish(buf);
    return buf;
}

// Question: a soft two-note chime going up a fourth, the musical shape of a
// question. The slightly inharmonic upper partial gives it a bell colour that
// sets it apart from the wooden start sound.
Buffer makeFrage() {
    static constexpr std::array<Partial, 3> chime{{
        {1.0, 1.0, 3.5},
        {2.76, 0.18, 9.0},
        {5.40, 0.06, 20.0},
    }};
    Buffer buf;
    addStruck(buf, 0.00, 659.26, 0.85, 0.45, chime);  // E5
    addStruck(buf, 0.24, 880.00, 1.00, 0.62, chime);  // A5
    finish(buf);
    return buf;
}

// Error / game over: two low, muffled buzzing tones stepping down, each sagging
// slightly in pitch. A detuned second voice adds a gentle beating; the steep
// harmonic roll-off keeps the buzz from becoming grating.
Buffer makeFehler() {
    Buffer buf;
    const auto tone = [&buf](double start, double length, double freq) {
        for (double detune : {1.0, 1.006}) {
            addVoice(buf, start, length,
                     Voice{.freq = freq * detune,
                           .glideTo = freq * detune * 0.96,
                           .gain = 0.5,
                           .brightness = 3.0,
                           .rolloff = 1.2,
                           .attack = 0.02,
                           .release = 0.09,
                           .decay = 2.0,
                           .vibratoHz = 0.0,
                           .vibratoDepth = 0.0,
                           .vibratoDelay = 0.0});
        }
        // A sub-octave sine with a quick decay gives each tone a soft thud.
        addVoice(buf, start, length * 0.6,
                 Voice{.freq = freq * 0.5,
                       .glideTo = freq * 0.5 * 0.96,
                       .gain = 0.6,
                       .brightness = 0.01,
                       .rolloff = 1.0,
                       .attack = 0.01,
                       .release = 0.12,
                       .decay = 6.0,
                       .vibratoHz = 0.0,
                       .vibratoDepth = 0.0,
                       .vibratoDelay = 0.0});
    };
    tone(0.00, 0.30, 220.00);  // A3
    tone(0.30, 0.45, 164.81);  // E3, longer: the "final" word
    finish(buf);
    return buf;
}

// Whoosh: white noise through two cascaded band-passes whose centre frequency
// rises and falls again, like something rushing past. The loudness follows the
// sweep; higher bands are attenuated a little because wider bands of noise
// sound louder and hissier.
Buffer makeWhoosh() {
    constexpr double kLength = 0.62;
    constexpr double kLowHz = 280.0;
    constexpr double kHighHz = 3200.0;
    constexpr double kPeakAt = 0.45;  // fraction of the length at which the sweep tops out
    constexpr double kQ = 2.2;
    const std::size_t count = toSamples(kLength);
    Buffer buf(count, 0.0);
    Noise noise(0x5A1F3C27u);
    BandPass stage1;
    BandPass stage2;
    for (std::size_t i = 0; i < count; ++i) {
        const double u = static_cast<double>(i) / static_cast<double>(count);
        // Map u so the curve peaks at kPeakAt: rises faster than it falls.
        const double w =
            u < kPeakAt ? 0.5 * u / kPeakAt : 0.5 + 0.5 * (u - kPeakAt) / (1.0 - kPeakAt);
        const double shape = std::sin(kPi * w);  // 0 -> 1 -> 0
        const double centre = kLowHz * std::pow(kHighHz / kLowHz, shape);
        const double x = noise.next();
        const double y = stage2.process(stage1.process(x, centre, kQ), centre, kQ);
        const double level = shape * shape * std::sqrt(kLowHz / centre * 4.0);
        buf[i] = y * level;
    }
    finish(buf);
    return buf;
}

// Fanfare: a short pickup chord on the dominant, then a longer, brighter tonic
// chord with a delayed vibrato, brass-like thanks to its rich harmonic series.
// Each chord note is doubled with a tiny detune for an ensemble feel.
Buffer makeTada() {
    Buffer buf;
    const auto chord = [&buf](double start, double length, std::span<const double> notes,
                              double brightness, double vibratoDepth) {
        for (double f : notes) {
            for (double detune : {0.998, 1.002}) {
                addVoice(buf, start, length,
                         Voice{.freq = f * detune,
                               .glideTo = f * detune,
                               .gain = 0.25,
                               .brightness = brightness,
                               .rolloff = 1.0,
                               .attack = 0.012,
                               .release = length > 0.3 ? 0.28 : 0.04,
                               .decay = 0.9,
                               .vibratoHz = 5.5,
                               .vibratoDepth = vibratoDepth,
                               .vibratoDelay = 0.12});
            }
        }
    };
    const std::array<double, 3> ta{392.00, 493.88, 587.33};            // G4 B4 D5
    const std::array<double, 4> daa{523.25, 659.26, 783.99, 1046.50};  // C5 E5 G5 C6
    chord(0.00, 0.14, ta, 1.8, 0.0);
    chord(0.17, 0.85, daa, 3.5, 0.006);
    finish(buf);
    return buf;
}

struct Sound {
    const char* fileName;
    Buffer (*make)();
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << (argc > 0 ? argv[0] : "make_sounds") << " <output-directory>\n";
        return 2;
    }
    const std::filesystem::path outDir = argv[1];
    std::error_code ec;
    std::filesystem::create_directories(outDir, ec);
    if (ec) {
        std::cerr << "cannot create " << outDir.string() << ": " << ec.message() << '\n';
        return 1;
    }

    const std::array<Sound, 5> sounds{{
        {"START.WAV", makeStart},
        {"FRAGE.WAV", makeFrage},
        {"FEHLER.WAV", makeFehler},
        {"WHOOSH.WAV", makeWhoosh},
        {"TADA.WAV", makeTada},
    }};
    for (const Sound& sound : sounds) {
        const Buffer buf = sound.make();
        const std::filesystem::path path = outDir / sound.fileName;
        if (!writeWav(path, buf)) {
            std::cerr << "cannot write " << path.string() << '\n';
            return 1;
        }
        const long ms = std::lround(static_cast<double>(buf.size()) * 1000.0 / kRate);
        std::cout << sound.fileName << "  " << ms << " ms\n";
    }
    return 0;
}
