#!/bin/sh
# Sets up a Debian 12 machine, builds the library, and turns a real speech recording into a spectrogram.
set -eu
cd "$(dirname "$0")/.."
sh tools/setup.sh
cmake --preset dev >/dev/null
cmake --build --preset dev --target spectrogram
build/examples/spectrogram/spectrogram /usr/share/sounds/alsa/Front_Center.wav --out spectrogram
