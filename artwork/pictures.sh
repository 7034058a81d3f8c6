#!/bin/sh
# Makes the pictures of the administration menu, of the edit frames, of trees and of the forum from their drawings. Needs
# rsvg-convert (librsvg2-bin), convert (imagemagick) and gifsicle. A GIF knows no half-transparent dots, so the
# round corners are cut.
set -eu
here=$(dirname "$0")
public=$here/../install/files/wwwroot
target=$public/torvex/images
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

# The forum's tree is drawn for authors and for visitors, each in a folder of its own.
target=$public/torvex/torvex_forum/images
visitors=$public/torvex_forum/images
mkdir -p "$target" "$visitors"
for drawing in "$here"/forum/*.svg; do
  case $drawing in */new.svg) picture "$drawing" 28 18 ;; *) picture "$drawing" 16 18 ;; esac
done
for name in tree_blank tree_vertline tree_node tree_lastnode new; do cp "$target/$name.gif" "$visitors/$name.gif"; done
