#!/bin/bash
# SPDX-License-Identifier: MIT
# Judges the Debian packages in a folder, which packaging/make-packages.sh has made:
#
#   packaging/check-packages.sh FOLDER           what lintian and its like say
#   packaging/check-packages.sh FOLDER --bare    besides, whether the command line does what is printed in README.md and
#                                                --help in a Debian 12 that has nothing but that package and what it
#                                                needs; makes that system in a folder, as root, in some minutes
#   packaging/check-packages.sh FOLDER OTHER     besides, whether both folders hold the same bytes
set -eu
packages=$(realpath -- "${1:?usage: packaging/check-packages.sh FOLDER [--bare | OTHER]}")
cd -- "$(dirname -- "$(readlink -f -- "$0")")/.."

say() { printf '%s\n' "$*" >&2; }

say 'The packages'
lintian --allow-root --fail-on error,warning "$packages"/*.deb
desktop-file-validate packaging/desktop/*.desktop
appstreamcli validate --no-net packaging/desktop/*.metainfo.xml
unpacked=$(mktemp -d)
trap 'rm -rf -- "$unpacked"' EXIT
for package in "$packages"/*.deb; do dpkg-deb -x "$package" "$unpacked"; done
find "$unpacked/usr/share/man" -name '*.gz' -print0 | while IFS= read -r -d '' page; do
  said=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 > /dev/null)
  if [ -n "$said" ]; then say "$page: $said"; exit 1; fi
done
needed=$(ldd "$unpacked/usr/bin/tesselink")
case $needed in *libQt* | *libicu*) say "the command line needs a window's libraries"; exit 1 ;; esac

if [ "${2:-}" = --bare ]; then
  say 'A bare Debian'
  # Where this system's own packages come from.
  # shellcheck disable=SC2016  # apt-get puts in what they stand for
  mirror=$(apt-get indextargets --format '$(CREATED_BY) $(RELEASE) $(REPO_URI)' |
    awk '$1 == "Packages" && $2 == "bookworm" { print $3; exit }')
  bare=$unpacked/bare
  debootstrap --variant=minbase bookworm "$bare" "$mirror" > "$unpacked/log" || { tail "$unpacked/log" >&2; exit 1; }
  cp "$packages"/tesselink_*.deb "$bare/tmp"
  chroot "$bare" sh -c 'DEBIAN_FRONTEND=noninteractive apt-get -qq -y --no-install-recommends install /tmp/tesselink_*.deb' \
    > "$unpacked/log" 2>&1 || { tail "$unpacked/log" >&2; exit 1; }
  mkdir "$unpacked/bin" "$bare/tmp/work"
  mount -t proc proc "$bare/proc"
  trap 'umount "$unpacked/bare/proc"; rm -rf -- "$unpacked"' EXIT
  # A program for the check of all commands that are printed, which runs the one in there.
  cat > "$unpacked/bin/tesselink" << END
#!/bin/sh
exec chroot '$bare' env -i LC_ALL=C.UTF-8 PATH=/usr/bin:/bin "HOME=\${HOME#"$bare"}" \\
  sh -c 'cd "\$0" && exec tesselink "\$@"' "\${PWD#"$bare"}" "\$@"
END
  chmod +x "$unpacked/bin/tesselink"
  TMPDIR=$bare/tmp/work python3 tests/packaging/check_commands.py "$unpacked/bin/tesselink" .
elif [ -n "${2:-}" ]; then
  say 'The same bytes'
  for package in "$packages"/*.deb; do cmp "$package" "$2/$(basename "$package")"; done
fi
say 'Nothing to complain about'
