# Wirefall: hold every source file against .clang-format and .clang-tidy.
# shellcheck shell=sh disable=SC2154

# Nothing is built for it; the preset only tells how each file would be compiled.
lint_preset=lint

# All of ours, headers too.
source_files() {
  (cd "$WIREFALL_ROOT" && find src tests bench fuzz tools -name '*.cpp' -o -name '*.h' | sort)
}

# What would be compiled: the files of a test program together, where their names allow that, so that
# what they all include is read once. A header is checked with whoever includes it.
units() {
  sed -n 's/^ *"file": "\(.*\)",*$/\1/p' "$WIREFALL_ROOT/build/$lint_preset/compile_commands.json" | sort -u
}

configure_lint() {
  preset=$lint_preset
  build=$WIREFALL_ROOT/build/$preset
  mkdir -p "$build" 2>/dev/null || fail "the folder $build cannot be written to."
  start_log "configure-$preset"
  configure_preset -DWIREFALL_BUILD_TESTS=ON || fail_with_log "configuring the preset $preset"
}

# What both tools find goes to the log and to the terminal. A tool that ends badly without a word is a
# finding as well.
lint() {
  configure_lint
  start_log lint
  say "checking how $(source_files | wc -l) files are written (log: $log)."
  {
    (cd "$WIREFALL_ROOT" && source_files | xargs clang-format --dry-run --Werror) 2>&1 ||
      echo "error: clang-format refuses files."
    # The count of warnings in headers that are not ours is of no interest.
    units | xargs -P "$(number_of_jobs)" -n 1 \
      clang-tidy --quiet -p "$WIREFALL_ROOT/build/$lint_preset" 2>/dev/null ||
      echo "error: clang-tidy refuses files."
  } | tee -a "$log" >&2
  say "lint: $(source_files | wc -l) files checked."
  ! grep -qE '(warning|error):' "$log" ||
    fail "the sources are not as .clang-format and .clang-tidy have them; the log is $log."
}
