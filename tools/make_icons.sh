#!/bin/sh
# SPDX-License-Identifier: MIT
# Draws the stored icons again from resources/pi_data.svg. Needs rsvg-convert and ImageMagick.
set -eu
cd "$(dirname "$0")/../resources"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for size in 16 24 32 48 64 128 256; do
  rsvg-convert -w "$size" -h "$size" pi_data.svg -o "$work/$size.png"
done
for size in 16 32 48 128 256; do
  convert "$work/$size.png" -strip "PNG32:pi_data_$size.png"
done
convert "$work/16.png" "$work/24.png" "$work/32.png" "$work/48.png" "$work/64.png" "$work/256.png" pi_data.ico
