# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# What the tests of the documents share. ctest sets SOURCE_DIR and SCRATCH_DIR.

here=$SOURCE_DIR/tests/artefacts/docs

# Writes each code block of a page to a file named after its heading, its number
# below that, and its language: "the-first-subagent-2.cpp".
#
# extract_blocks PAGE FOLDER
extract_blocks() {
  rm -rf "$2"
  mkdir -p "$2"
  awk -v folder="$2" '
    file == "" && /^#+ / {
      heading = tolower($0)
      gsub(/^#+ |[^a-z0-9 -]/, "", heading)
      gsub(/ /, "-", heading)
      number = 0
    }
    /^```/ && file == "" {
      file = folder "/" heading "-" ++number "." substr($0, 4)
      printf "" >file
      next
    }
    /^```/ { close(file); file = ""; next }
    file != "" { print >file }
  ' "$1"
}

# fail MESSAGE...
fail() {
  echo "$@" >&2
  return 1
}
