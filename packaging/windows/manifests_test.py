"""Tests the manifests for winget and Scoop beside the packages that they describe.

    manifests_test.py FOLDER VERSION

The checks are the parts of the published schemas that these manifests can violate: what is required,
what values are known, and how long texts may be.
"""

import datetime
import hashlib
import json
import pathlib
import re
import sys
import unittest

import yaml

FOLDER, VERSION = pathlib.Path(sys.argv[1]), sys.argv[2]
NAME = "Tarnwerk.Tarnwerk"
SCHEMA = "1.12.0"
# The type of each file, and its fields besides those of every file.
FILES = {
    "": ("version", {"DefaultLocale": str}),
    ".installer": ("installer", {
        "Installers": list, "InstallerType": str, "MinimumOSVersion": str, "InstallModes": list,
        "ElevationRequirement": str, "UpgradeBehavior": str, "ProductCode": str,
        "ReleaseDate": datetime.date, "ExpectedReturnCodes": list}),
    ".locale.zh-CN": ("defaultLocale", {
        "PackageLocale": str, "Publisher": str, "PublisherUrl": str, "PackageName": str, "PackageUrl": str,
        "License": str, "Copyright": str, "ShortDescription": str, "Moniker": str, "Tags": list}),
    ".locale.en-US": ("locale", {"PackageLocale": str, "ShortDescription": str}),
}
KNOWN = {
    "InstallerType": {"nullsoft"}, "Architecture": {"x64"}, "Scope": {"user", "machine"},
    "ElevationRequirement": {"elevationRequired", "elevationProhibited", "elevatesSelf"},
    "UpgradeBehavior": {"install", "uninstallPrevious", "deny"},
    "ReturnResponse": {"packageInUse"},
}


def sha256(name):
    return hashlib.sha256((FOLDER / name).read_bytes()).hexdigest()


class ManifestsTest(unittest.TestCase):
    def read(self, part):
        text = (FOLDER / f"{NAME}{part}.yaml").read_text(encoding="utf-8")
        self.assertNotRegex(text, r"@[A-Z_]+@")
        schema = re.match(r"# yaml-language-server: \$schema=https://aka\.ms/winget-manifest\."
                          rf"(\w+)\.{re.escape(SCHEMA)}\.schema\.json\n", text).group(1)
        self.assertEqual(schema, FILES[part][0])
        return yaml.safe_load(text)

    def check_known(self, fields):
        for name, value in fields.items():
            self.assertIn(value, KNOWN.get(name, {value}))
            if name.endswith("Url"):
                self.assertRegex(value, r"^https://\S{1,2000}$")

    def test_winget_manifests_have_the_fields_of_their_schemas(self):
        for part, (kind, own) in FILES.items():
            with self.subTest(kind):
                manifest = self.read(part)
                self.assertEqual((manifest.pop("PackageIdentifier"), manifest.pop("PackageVersion"),
                                  manifest.pop("ManifestType"), manifest.pop("ManifestVersion")),
                                 (NAME, VERSION, kind, SCHEMA))
                self.assertEqual({name: type(value) for name, value in manifest.items()}, own)
                self.check_known({name: value for name, value in manifest.items() if isinstance(value, str)})
                self.assertLessEqual(len(manifest.get("ShortDescription", "")), 256)
        self.assertEqual(self.read("")["DefaultLocale"], self.read(".locale.zh-CN")["PackageLocale"])

    def test_winget_installs_the_package_with_this_checksum_for_a_user_or_for_all(self):
        manifest = self.read(".installer")
        scopes = {}
        for installer in manifest["Installers"]:
            name = installer["InstallerUrl"].rsplit("/", 1)[1]
            self.assertEqual(name, f"tarnwerk-{VERSION}-setup.exe")
            self.assertEqual(installer["InstallerSha256"], sha256(name).upper())
            scopes[installer["Scope"]] = installer["InstallerSwitches"]
            self.check_known({name: value for name, value in installer.items() if isinstance(value, str)})
        self.assertEqual(scopes, {"user": {"Custom": "/CurrentUser"}, "machine": {"Custom": "/AllUsers"}})
        for code in manifest["ExpectedReturnCodes"]:
            self.assertEqual(set(code), {"InstallerReturnCode", "ReturnResponse"})
            self.check_known(code)

    def test_scoop_unpacks_the_package_with_this_checksum(self):
        text = (FOLDER / "tarnwerk.json").read_text(encoding="utf-8")
        self.assertNotRegex(text, r"@[A-Z_0-9]+@")
        manifest = json.loads(text)
        self.assertTrue({"version", "description", "homepage", "license"} <= set(manifest))
        self.assertEqual(manifest["version"], VERSION)
        source = manifest["architecture"]["64bit"]
        name = source["url"].rsplit("/", 1)[1]
        self.assertEqual((name, source["hash"]), (f"tarnwerk-{VERSION}-portable.zip", sha256(name)))
        update = manifest["autoupdate"]["architecture"]["64bit"]["url"]
        self.assertEqual(update.replace("$version", VERSION), source["url"])
        self.assertEqual(re.search(manifest["checkver"]["regex"], name).group(1), VERSION)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
