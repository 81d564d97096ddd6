#!/usr/bin/env bash
# Renders the PNG icons from the two SVGs under icons/hicolor/scalable. Run it
# by hand after changing an SVG and commit the PNGs: the build only copies
# them. Needs ImageMagick's convert.
set -euo pipefail

cd "$(dirname "$0")/icons/hicolor"
sizes=(16 22 24 32 48 64 128 256)

for icon in apps/zr310 mimetypes/application-x-zr310-data; do
    # Draw once at four times the largest size, then scale down, so that small
    # sizes get smooth edges.
    large=$(mktemp --suffix=.png)
    convert -background none -density 384 "scalable/$icon.svg" "$large"
    for size in "${sizes[@]}"; do
        mkdir -p "${size}x${size}/$(dirname "$icon")"
        convert "$large" -resize "${size}x${size}" -strip -depth 8 \
            "PNG32:${size}x${size}/$icon.png"
    done
    rm -f "$large"
done
