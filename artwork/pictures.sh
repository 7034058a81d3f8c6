#!/bin/sh
# Makes the pictures of the administration menu, of the edit frames and of trees from their drawings. Needs
# rsvg-convert (librsvg2-bin), convert (imagemagick) and gifsicle. A GIF knows no half-transparent dots, so the
# round corners are cut.
set -eu
here=$(dirname "$0")
target=$here/../install/files/wwwroot/torvex/images
work=$(mktemp -d)
trap 'rm -r "$work"' EXIT
picture() {
  name=$(basename "$1" .svg)
  rsvg-convert --width "$2" --height "$3" "$1" -o "$work/$name.png"
  convert "$work/$name.png" -channel A -threshold 30% +channel -background white -alpha background \
    +dither -colors 31 -strip "gif:$work/$name.gif"
  gifsicle --no-comments --no-names -O3 "$work/$name.gif" -o "$target/$name.gif"
}
for drawing in "$here"/menu/*.svg "$here"/bodies/*.svg; do picture "$drawing" 20 20; done
for drawing in "$here"/tree/*.svg; do picture "$drawing" 16 18; done
