"""What the commands do, answer and leave on the disk."""
import shutil
import unittest
import uuid

from support import DONE, FAILED, NO_SUCH_APP, SEVERAL_APPS, USAGE, ProcessTestCase, Site, png, wait_until


class CreatingAnApp(ProcessTestCase):
    def test_makes_a_bundle_that_other_programs_can_read(self):
        app = self.create("Harbour", "--icon", str(self.icon), "--theme-color", "#1E6FD9", "--border")
        bundle = self.home.bundles / "Harbour.app"
        self.assertEqual(self.bundle_of(app), bundle)
        information = self.information_of(bundle)
        self.assertEqual(information["CFBundleDisplayName"], "Harbour")
        self.assertEqual(information["CFBundleName"], "Harbour")
        self.assertEqual(information["CFBundleIdentifier"], app["bundleIdentifier"])
        schemes = [scheme for kind in information["CFBundleURLTypes"] for scheme in kind["CFBundleURLSchemes"]]
        self.assertEqual(schemes, ["wrapio-" + app["id"].lower()])
        self.assertTrue((bundle / "Contents" / "Linux" / "WrapioRunner").stat().st_mode & 0o100)
        pictures = self.home.tool("icns2png", "-l", str(bundle / "Contents" / "Resources" / "AppIcon.icns"))
        self.assertEqual(pictures.status, 0, str(pictures))
        self.assertIn("512x512", pictures.out)
        self.assert_healthy()

    def test_writes_what_was_asked_for_into_the_configuration_of_the_runner(self):
        (self.scratch / "style.css").write_text("body { color: red }")
        (self.scratch / "script.js").write_text("document.title = 'ü';", "utf-8")
        app = self.create(
            "Harbour", "--css", str(self.scratch / "style.css"), "--js", str(self.scratch / "script.js"),
            "--js-at", "documentStart", "--user-agent", "Agent/1", "--allow-host", "a.example", "--allow-host",
            "b.example", "--theme-color", "#abcdef", "--theme-opacity", "0.5", "--border", "--no-badge",
        )
        self.assertEqual(
            self.configuration_of(self.bundle_of(app)),
            {
                "url": "https://example.com",
                "name": "Harbour",
                "userAgent": "Agent/1",
                "allowedHosts": ["a.example", "b.example"],
                "runnerVersion": "1.0.0",
                "badgeEnabled": False,
                "customCSS": "body { color: red }",
                "customJS": "document.title = 'ü';",
                "jsInjectionTime": "documentStart",
                "themeColor": "#ABCDEF",
                "themeOpacity": 0.5,
                "themeBorderEnabled": True,
            },
        )

    def test_of_a_site_on_this_machine_needs_developer_mode(self):
        site = Site()
        self.addCleanup(site.close)
        address = f"127.0.0.1:{site.port}"
        refused = self.fails(FAILED, "create", address, "--name", "Local", "--no-icon")
        self.assertIn("--dev", refused.err)
        app = self.create("Local", "--dev", address=address)
        self.assertEqual(self.configuration_of(self.bundle_of(app))["url"], f"http://{address}")
        self.assertTrue(app["isDevMode"])

    def test_keeps_a_record_with_every_field_in_the_catalogue(self):
        app = self.create("Harbour", "--icon", str(self.icon))
        (record,) = self.home.records()
        self.assertEqual(record["id"], app["id"])
        self.assertEqual(record["configuredURL"], "https://example.com")
        self.assertEqual(record["appName"], "Harbour")
        self.assertEqual(record["iconSource"], "favicon")
        self.assertEqual(record["runnerVersion"], "1.0.0")
        self.assertEqual(record["sortOrder"], 0)
        self.assertTrue((self.home.data / "Wrapio" / (app["id"] + ".png")).is_file())

    def test_without_json_says_in_one_line_where_the_app_is(self):
        result = self.succeeds("create", "example.com", "--name", "Harbour", "--no-icon")
        self.assertEqual(result.out, f"Created Harbour ({self.home.bundles / 'Harbour.app'})\n")

    def test_leaves_nothing_behind_when_an_option_is_wrong(self):
        self.create("Other")
        before = self.home.files(), self.home.records()
        for options in (
            ("--icon", str(self.scratch / "missing.png")),
            ("--icon", str(self.installation.template / "Contents" / "Info.plist")),
            ("--icon", str(self.scratch)),
            ("--css", str(self.scratch / "missing.css")),
            ("--js", str(self.icon)),
            ("--name", "../../outside"),
        ):
            self.fails(FAILED, "create", "example.com", "--no-icon" if "--icon" not in options else "--dev", *options)
        self.assertEqual((self.home.files(), self.home.records()), before)

    def test_refuses_a_style_or_script_of_more_than_100_kilobytes(self):
        code = self.scratch / "large"
        code.write_bytes(b" " * 102401)
        for option, message in (("--css", "Custom CSS exceeds 100KB limit"), ("--js", "Custom JavaScript exceeds 100KB")):
            refused = self.fails(FAILED, "create", "example.com", "--no-icon", option, str(code))
            self.assertIn(message, refused.err)
        code.write_bytes(b" " * 102400)
        self.create("Large", "--css", str(code), "--js", str(code))


class ShowingApps(ProcessTestCase):
    def test_list_of_an_empty_home_says_how_to_make_an_app(self):
        self.assertIn("wrapio create", self.succeeds("list").out)
        self.assertEqual(self.succeeds("list", "--json").json(), [])

    def test_list_and_show_answer_nothing_but_json_with_the_same_record(self):
        app = self.create("Harbour")
        other = self.create("Pier")
        listed = self.succeeds("list", "--json").json()
        self.assertEqual([a["id"] for a in listed], [app["id"], other["id"]])
        for key in ("displayName", "bundleIdentifier", "bundlePath", "isRunning", "isOutdated"):
            self.assertIn(key, listed[0])
        self.assertEqual(self.succeeds("show", "Harbour", "--json").json(), listed[0])

    def test_looking_changes_nothing_on_the_disk(self):
        self.create("Harbour")
        before = {f: (self.home.folder / f).lstat().st_mtime_ns for f in self.home.files() if ".lock" not in f}
        self.succeeds("list")
        self.succeeds("show", "Harbour")
        self.home.wrapio("doctor")
        after = {f: (self.home.folder / f).lstat().st_mtime_ns for f in self.home.files() if ".lock" not in f}
        self.assertEqual(before, after)

    def test_an_app_is_found_by_id_by_its_beginning_and_by_name(self):
        app = self.create("Harbour")
        for text in (app["id"], app["id"].lower(), app["id"][:4], "Harbour"):
            self.assertEqual(self.succeeds("show", text, "--json").json()["id"], app["id"])

    def test_an_app_that_is_not_there_gives_status_3(self):
        self.create("Harbour")
        for command in ("show", "focus", "quit", "launch", "regenerate", "delete"):
            self.fails(NO_SUCH_APP, command, "Pier")
        self.fails(NO_SUCH_APP, "move", "Pier", "1")
        self.fails(NO_SUCH_APP, "rename", "Pier", "Quay")
        self.fails(NO_SUCH_APP, "edit", "Pier", "--border")
        self.fails(NO_SUCH_APP, "show", str(uuid.uuid4()))

    def test_a_name_that_two_apps_have_gives_status_4_and_their_ids(self):
        first = self.create("Harbour")
        second = self.home.wrapio("create", "example.org", "--name", "Harbour", "--no-icon", "--json")
        self.assertEqual(second.status, DONE)
        self.assertRegex(second.err, r"\Awrapio: note: [^\n]+\n\Z")
        for command in ("show", "delete", "regenerate"):
            failed = self.fails(SEVERAL_APPS, command, "Harbour")
            self.assertIn(first["id"], failed.err)
            self.assertIn(second.json()["id"], failed.err)

    def test_a_reader_that_goes_away_early_does_not_stop_a_change(self):
        process = self.home.start("create", "example.com", "--name", "Harbour", "--no-icon")
        process.stdout.close()
        process.stderr.close()
        process.wait(60)
        self.assertEqual([r["appName"] for r in self.home.records()], ["Harbour"])
        self.assert_healthy()


class WrongUsage(ProcessTestCase):
    def test_gives_status_2_and_changes_nothing(self):
        for arguments in (
            ("frobnicate",),
            ("create",),
            ("create", "a.example", "b.example"),
            ("create", "a.example", "--nonsense"),
            ("create", "a.example", "--icon", "x.png", "--no-icon"),
            ("create", "a.example", "--theme-color", "blue"),
            ("create", "a.example", "--theme-opacity", "2"),
            ("create", "a.example", "--theme-opacity", "nan"),
            ("create", "a.example", "--js-at", "later"),
            ("edit",),
            ("move", "X", "0"),
            ("move", "X", "one"),
            ("list", "surplus"),
        ):
            self.fails(USAGE, *arguments)
        self.assertFalse(self.home.catalogue.exists())
        self.assertFalse(self.home.bundles.exists())

    def test_version_and_help_go_to_standard_output(self):
        self.assertRegex(self.succeeds("--version").out, r"\Awrapio \d+\.\d+\.\d+\n\Z")
        for arguments in (("--help",), ("create", "--help")):
            text = self.succeeds(*arguments).out
            for command in ("create", "edit", "list", "doctor", "Exit status"):
                self.assertIn(command, text)

    def test_an_address_that_is_none_is_refused_with_status_1(self):
        for address in ("", " ", "ftp://example.com", "http://", "exa mple", "javascript:alert(1)", "http://[::1"):
            self.fails(FAILED, "create", address, "--name", "X", "--no-icon")
        self.assertEqual(self.home.records(), [])


class ChangingAnApp(ProcessTestCase):
    def test_rename_moves_the_bundle_and_its_registration_and_keeps_the_id(self):
        before = self.create("Harbour", "--icon", str(self.icon))
        after = self.succeeds("rename", "Harbour", "Pier", "--json").json()
        self.assertEqual(after["id"], before["id"])
        self.assertFalse(self.bundle_of(before).exists())
        self.assertFalse(self.entry_of(before).exists())
        self.assertEqual(self.information_of(self.home.bundles / "Pier.app")["CFBundleName"], "Pier")
        self.assertTrue(self.entry_of(after).is_file())
        self.assert_healthy()

    def test_edit_makes_the_bundle_again_with_the_changes_only(self):
        app = self.create("Harbour", "--user-agent", "Agent/1", "--theme-color", "#123456")
        self.succeeds("edit", "Harbour", "--address", "example.org/path", "--theme-color", "", "--border")
        configuration = self.configuration_of(self.bundle_of(app))
        self.assertEqual(configuration["url"], "https://example.org/path")
        self.assertEqual(configuration["userAgent"], "Agent/1")
        self.assertNotIn("themeColor", configuration)
        self.assertTrue(configuration["themeBorderEnabled"])
        self.assert_healthy()

    def test_edit_of_the_icon_reaches_the_bundle(self):
        app = self.create("Harbour")
        icon = self.bundle_of(app) / "Contents" / "Resources" / "AppIcon.icns"
        self.assertFalse(icon.exists())
        self.succeeds("edit", "Harbour", "--icon", str(self.icon))
        first = icon.read_bytes()
        self.icon.write_bytes(png(color=(0, 0, 255)))
        self.succeeds("edit", "Harbour", "--icon", str(self.icon))
        self.assertNotEqual(icon.read_bytes(), first)
        self.succeeds("edit", "Harbour", "--no-icon")
        self.assertFalse(icon.exists())
        self.assertEqual(self.home.records()[0]["iconSource"], "default")

    def test_move_writes_the_order_of_all_apps(self):
        for name in ("A", "B", "C"):
            self.create(name)
        self.succeeds("move", "C", "1")
        self.assertEqual([(r["appName"], r["sortOrder"]) for r in self.home.records()], [("C", 0), ("A", 1), ("B", 2)])
        self.assertEqual([a["appName"] for a in self.succeeds("list", "--json").json()], ["C", "A", "B"])
        self.fails(USAGE, "move", "C", "4")

    def test_regenerate_repairs_a_bundle_that_was_changed_or_removed(self):
        app = self.create("Harbour")
        configuration = self.bundle_of(app) / "Contents" / "Resources" / "config.json"
        configuration.write_text("{}")
        report = self.home.wrapio("doctor", "--json")
        self.assertEqual(report.status, FAILED)
        (problem,) = [c for c in report.json()["checks"] if c["severity"] == "problem"]
        self.assertEqual((problem["app"], problem["remedy"]), (app["id"], "wrapio regenerate " + app["id"]))
        self.succeeds("regenerate", "Harbour")
        self.assertEqual(self.configuration_of(self.bundle_of(app))["url"], "https://example.com")
        self.assert_healthy()

    def test_update_all_makes_the_apps_of_an_older_template_again(self):
        old = self.create("Old")
        self.installation.write_template_information("1.2.0")
        new = self.create("New")
        outdated = {a["appName"]: a["isOutdated"] for a in self.succeeds("list", "--json").json()}
        self.assertEqual(outdated, {"Old": True, "New": False})
        new_seal = (self.bundle_of(new) / "Contents" / "_CodeSignature" / "CodeResources").stat().st_ino
        self.assertEqual(self.succeeds("update-all", "--json").json(), {"updated": 1, "failed": []})
        self.assertEqual(self.configuration_of(self.bundle_of(old))["runnerVersion"], "1.2.0")
        self.assertEqual([r["runnerVersion"] for r in self.home.records()], ["1.2.0", "1.2.0"])
        self.assertEqual((self.bundle_of(new) / "Contents" / "_CodeSignature" / "CodeResources").stat().st_ino, new_seal)
        self.assertEqual(self.succeeds("update-all").out, "Updated 0 of 0 apps\n")
        self.assert_healthy()

    def test_every_change_answers_the_record_in_json(self):
        app = self.create("Harbour")
        for arguments in (
            ("edit", app["id"], "--border"),
            ("rename", app["id"], "Pier"),
            ("move", app["id"], "1"),
            ("regenerate", app["id"]),
        ):
            answer = self.succeeds(*arguments, "--json").json()
            self.assertEqual(answer["id"], app["id"])
        self.assertEqual(self.succeeds("delete", app["id"], "--json").json(), {"deleted": app["id"]})

    def test_verbose_tells_on_standard_error_and_leaves_the_answer_alone(self):
        result = self.home.wrapio("create", "example.com", "--name", "Harbour", "--no-icon", "--json", "--verbose")
        self.assertEqual(result.json()["appName"], "Harbour")
        self.assertIn("[AppLifecycle] Generating app for Harbour", result.err)


class RunningApps(ProcessTestCase):
    def test_launch_starts_the_bundle_once_and_quit_ends_it(self):
        app = self.create("Harbour")
        self.succeeds("launch", "Harbour")
        self.assertTrue(self.succeeds("show", "Harbour", "--json").json()["isRunning"])
        self.succeeds("launch", "Harbour")
        (started,) = self.home.started_apps()
        self.assertEqual(started["arguments"], [str(self.bundle_of(app) / "Contents" / "Linux" / "WrapioRunner")])
        self.succeeds("focus", "Harbour")
        self.assertEqual(self.succeeds("quit", "Harbour").out, "Quit Harbour\n")
        self.assertFalse(self.succeeds("show", "Harbour", "--json").json()["isRunning"])
        self.assertEqual(self.succeeds("quit", "Harbour").out, "Harbour is not running\n")
        self.fails(FAILED, "focus", "Harbour")

    def test_launch_makes_a_missing_bundle_first(self):
        app = self.create("Harbour")
        shutil.rmtree(self.bundle_of(app))
        self.succeeds("launch", "Harbour")
        self.assertEqual(len(self.home.started_apps()), 1)

    def test_changing_and_deleting_a_running_app_ends_it(self):
        self.create("Harbour")
        for change in (
            ("edit", "Harbour", "--border"),
            ("regenerate", "Harbour"),
            ("rename", "Harbour", "Pier"),
            ("delete", "Pier"),
        ):
            name = change[1]
            self.succeeds("launch", name)
            self.assertEqual(len(wait_until(self.home.running_apps)), 1)
            self.succeeds(*change)
            self.assertEqual(wait_until(lambda: not self.home.running_apps()), True, change)


if __name__ == "__main__":
    unittest.main()
