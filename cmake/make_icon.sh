#!/bin/bash
# make_icon.sh PICTURE.svg ICON.ico
#
# Makes a Windows icon in all sizes that the shell uses. Up to 64 pixels the images are bitmaps,
# which the oldest parts of the shell need; the large one is a PNG.
set -euo pipefail

picture=$1
icon=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

Render() { rsvg-convert --width="$1" --height="$1" "$picture" >"$work/$1.png"; }

arguments=()
for size in 16 20 24 32 40 48 64; do
    Render $size
    arguments+=("$work/$size.png")
done
Render 256
icotool --create --output="$icon" "${arguments[@]}" --raw="$work/256.png"
