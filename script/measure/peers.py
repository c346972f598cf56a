"""What the library and the command are measured beside, from Debian.

What is installed is used. The rest is fetched and unpacked below a folder, and
runs from there: nothing is installed, and no server is started.
"""

import dataclasses
import os
import pathlib
import shutil
import subprocess
import sys

# slapd's, and what it needs besides libldap.
_SLAPD = ("slapd", "libltdl7", "libwrap0", "libodbc2")
_PYTHON = ("python3-ldap", "python3-pyasn1", "python3-pyasn1-modules")
# These are read first: others build on them.
_FIRST = ("core.schema", "cosine.schema", "inetorgperson.schema")


@dataclasses.dataclass
class Peers:
    slaptest: str = None       # the command; none where it cannot be had
    schema_files: list = None  # in an order in which they can be read
    python_ldap: bool = False
    environment: dict = dataclasses.field(default_factory=dict)  # of both


def notice(text):
    print(f"script/performance: {text}", file=sys.stderr)


def _runs(command, environment, folder=None):
    try:
        return subprocess.run(
            command, cwd=folder, env={**os.environ, **environment},
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            check=False).returncode == 0
    except FileNotFoundError:
        return False


def _unpack(packages, folder):
    """Fetches packages unless that was done before."""
    root = folder / "root"
    for package in packages:
        if list(folder.glob(f"{package}_*.deb")):
            continue
        folder.mkdir(parents=True, exist_ok=True)
        if not _runs(["apt-get", "-q", "-o", "APT::Sandbox::User=root",
                      "download", package], {}, folder):
            notice(f"Debian's package {package} cannot be fetched")
            return
        for file in folder.glob(f"{package}_*.deb"):
            subprocess.run(["dpkg-deb", "-x", file, root], check=True)


def _schema_files(folder):
    files = sorted(folder.glob("*.schema"))
    return sorted(files, key=lambda file: file.name not in _FIRST)


def find(folder):
    """Returns the peers that can be had."""
    root = folder / "root"
    peers = Peers()
    installed = shutil.which("slaptest", path="/usr/sbin:/usr/bin")
    schema = pathlib.Path("/etc/ldap/schema")
    if not installed or not list(schema.glob("*.schema")):
        _unpack(_SLAPD, folder)
        schema = root / "etc/ldap/schema"
        libraries = [str(path) for path in (root / "usr/lib").glob("*-linux-*")]
        peers.environment["LD_LIBRARY_PATH"] = ":".join(libraries)
    peers.schema_files = _schema_files(schema)
    if not peers.schema_files:
        notice("no .schema files: the real corpus is left out")
    slaptest = installed or str(root / "usr/sbin/slaptest")
    folder.mkdir(parents=True, exist_ok=True)
    empty = folder / "empty.conf"
    empty.touch()
    if _runs([slaptest, "-u", "-f", empty], peers.environment):
        peers.slaptest = slaptest
    else:
        notice("slaptest does not run: it is left out")

    importing = [sys.executable, "-c", "import ldap.schema"]
    if not _runs(importing, {}):
        _unpack(_PYTHON, folder)
        peers.environment["PYTHONPATH"] = str(
            root / "usr/lib/python3/dist-packages")
    peers.python_ldap = _runs(importing, peers.environment)
    if not peers.python_ldap:
        notice("python-ldap cannot be imported: it is left out")
    return peers
