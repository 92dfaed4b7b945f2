#!/usr/bin/env bash
# Lists the external symbols of the library (static archives and shared objects
# given as arguments) and fails on every one whose outermost name lies in the
# global namespace but is not part of the library's interface. An embedder's own
# global names can then never clash with the library's internal helpers.
#
#   check_symbols.sh build/libfpl.a build-shared/libfpl.so
set -euo pipefail

if [ "$#" -eq 0 ]; then
  echo "usage: $0 LIBRARY..." >&2
  exit 2
fi

for library in "$@"; do
  if [ ! -f "$library" ]; then
    echo "$library: no such file" >&2
    exit 2
  fi
  case "$library" in
    *.so | *.so.*) options="-D --defined-only" ;;
    *) options="-g --defined-only" ;;
  esac
  # shellcheck disable=SC2086
  nm $options "$library" | awk 'NF >= 3 { print $NF }' | sort -u | perl -ne '
    # The interface: classes and records of the public headers, the set-up
    # globals and the free functions. The namespaces stay inside the library
    # (fplc) or belong to the C++ runtime and to tinyxml2, whose inline
    # functions unoptimised builds keep out of line.
    BEGIN {
      %allowed = map { $_ => 1 } qw(
        Fahrplandefinition Token TokenList Error keineZeit
        Aussenanlage Betriebsstelle FplEintrag Fzg FzgLib Reihung Strecke
        Verkehrstag Zug Zuglauf Zuglaufsegment
        quorvel_init quorvelpath quorvel_dev zeitToString
        fplc std __gnu_cxx tinyxml2);
    }
    chomp;
    my $symbol = $_;
    next if $symbol =~ /^DW\.ref\./;          # references the unwinder keeps
    my $name = $symbol;
    if ($name =~ s/^_Z//) {
      # special names: vtables, type information, guard variables, thunks
      $name =~ s/^(?:T[VTIS]|TH|TW|GV|GR)//
        or $name =~ s/^T[hv](?:n?\d+_)+//;
      $name =~ s/^L//;                         # internal linkage marker
      $name =~ s/^Z//;                         # local entity: its enclosing function
      $name =~ s/^N[rVKRO]*//;                 # nested name with qualifiers
      if ($name =~ /^S[tabsiod]/) {
        $name = "std";
      } elsif ($name =~ /^(\d+)/) {
        $name = substr($name, length($1), $1);
      } else {
        $name = "operator " . substr($name, 0, 2);
      }
    } elsif ($name =~ /^_/) {
      next;                                    # names reserved for the toolchain
    }
    next if $allowed{$name};
    # the standard library'"'"'s inline placement new and delete, kept out of line
    # by unoptimised builds
    next if $symbol =~ /^_Z(?:nwmPv|namPv|dlPvS_|daPvS_)$/;
    print "$name\t$symbol\n";
  ' > "${TMPDIR:-/tmp}/fplc-symbols.$$" || true
  if [ -s "${TMPDIR:-/tmp}/fplc-symbols.$$" ]; then
    echo "$library: global names outside the library's interface:" >&2
    sort -u "${TMPDIR:-/tmp}/fplc-symbols.$$" | c++filt >&2 || true
    failed=1
  else
    echo "$library: only interface names in the global namespace"
  fi
  rm -f "${TMPDIR:-/tmp}/fplc-symbols.$$"
done
exit "${failed:-0}"
