# shellcheck shell=sh
# The pictures of the documents.

run_screenshots() {
  need building tests windows wine browser
  build release -DKIV_TESTS=OFF
  build windows -DKIV_TESTS=ON
  tests/window/screenshots.sh build/windows build/release/apps/kivsys/kivsys docs/pictures
  tests/drawing/rest_staves.sh build/release/apps/kivsys/kivsys docs/pictures
  tests/drawing/browser.sh build/release/apps/kivsys/kivsys build/pictures
  for picture in chart page; do
    convert "build/pictures/$picture.png" -trim +repage -bordercolor white -border 16 -colors 64 -strip \
      "docs/pictures/$picture.png"
  done
}
