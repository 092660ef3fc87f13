# Sourced: a private configuration of apt, so that source packages and i386 packages can be fetched without
# touching the system's own.

# apt_privato FOLDER deb|deb-src ARCHITECTURE: writes FOLDER/apt.conf, for use as APT_CONFIG, with the Debian
# mirrors that the system itself uses and nothing installed, and reads their lists.
apt_privato() {
  local folder=$1 type=$2 architecture=$3
  mkdir -p "$folder/lists/partial" "$folder/archives/partial"
  : >"$folder/status"
  apt-get indextargets --format '$(SITE) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' 'Origin: Debian' |
    sort -u | while read -r site release component; do
      echo "$type [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $site $release $component"
    done >"$folder/sources.list"
  [ -s "$folder/sources.list" ] || { echo "apt knows no Debian mirror (run apt-get update)" >&2; exit 1; }
  cat >"$folder/apt.conf" <<CONF
APT::Architecture "$architecture";
APT::Architectures { "$architecture"; };
APT::Sandbox::User "root";
APT::Install-Recommends "false";
Acquire::Languages "none";
Dir::Etc::SourceList "$folder/sources.list";
Dir::Etc::SourceParts "/dev/null";
Dir::State::Lists "$folder/lists";
Dir::State::status "$folder/status";
Dir::Cache "$folder";
CONF
  # A mirror in the middle of its update is no reason to stop: what is missing shows at the next step.
  APT_CONFIG=$folder/apt.conf apt-get update -qq >&2 || true
}
