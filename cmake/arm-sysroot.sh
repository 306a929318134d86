#!/usr/bin/env bash
# Fills build/arm-sysroot with the armhf libraries that the 32-bit ARM build links: downloads the
# packages with apt for the foreign architecture, with its own lists and cache, and unpacks them.
# The machine's own packages and apt state are neither used nor changed.
#
# Exit code 0: the folder is there (nothing is downloaded when it already was);
#           3: the packages cannot be had.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

packages=(libsqlite3-0 libsqlite3-dev libsodium23 libsodium-dev nlohmann-json3-dev libcli11-dev
          googletest)
sysroot=$PWD/build/arm-sysroot
stamp=$sysroot/packages
apt=$PWD/build/arm-apt

if [ -f "$stamp" ] && [ "$(cat "$stamp")" = "${packages[*]}" ]; then
    echo "arm-sysroot: $sysroot is up to date"
    exit 0
fi

echo "arm-sysroot: downloading ${packages[*]} for armhf"
rm -rf "$apt"
mkdir -p "$apt"/{lists/partial,cache/archives/partial,debs}
cat > "$apt/apt.conf" <<CONF
APT::Architecture "armhf";
#clear APT::Architectures;
APT::Architectures { "armhf"; };
APT::Sandbox::User "";
Dir::State::lists "$apt/lists";
Dir::State::status "/dev/null";
Dir::Cache "$apt/cache";
#clear APT::Update::Pre-Invoke;
#clear APT::Update::Post-Invoke;
#clear APT::Update::Post-Invoke-Success;
CONF

# An index that the mirror serves out of step with its release file fails the update as a whole,
# though the other indexes are there: whether the packages can be had is the download's to say.
if ! apt-get -c "$apt/apt.conf" -q update; then
    echo "arm-sysroot: the index update complained (see above); going on with what it did fetch"
fi
if ! (cd "$apt/debs" && apt-get -c "$apt/apt.conf" -q download "${packages[@]}"); then
    echo "arm-sysroot: THE ARMHF PACKAGES CANNOT BE HAD" >&2
    exit 3
fi

rm -rf "$sysroot" "$sysroot.new"
mkdir -p "$sysroot.new"
for deb in "$apt"/debs/*.deb; do
    dpkg-deb -x "$deb" "$sysroot.new"
done
echo "${packages[*]}" > "$sysroot.new/packages"
mv "$sysroot.new" "$sysroot"
rm -rf "$apt"
echo "arm-sysroot: $sysroot is ready"
