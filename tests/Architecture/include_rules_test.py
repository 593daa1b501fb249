"""Who may include what."""
import functools
import re
import unittest

import project

CODE = (".h", ".cpp")
OURS = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.M)
SYSTEM = re.compile(r"^\s*#\s*include\s+<([^>]+)>", re.M)

BELOW_SERVICES = {"Utilities", "Models", "Platform"}
BELOW_VIEW_MODELS = BELOW_SERVICES | {"Services"}
EVERYTHING = None

# The longest prefix counts. A file may include headers of these folders; EVERYTHING is for the composition root.
ALLOWED = {
    "src/Utilities/": {"Utilities"},
    "src/Models/": {"Utilities", "Models"},
    "src/Models/ConfigurationManager.": BELOW_VIEW_MODELS,
    "src/Models/WebAddressRules.": BELOW_VIEW_MODELS,
    "src/Platform/": BELOW_SERVICES,
    "src/Platform/Linux/": BELOW_SERVICES | {"Platform/Linux"},
    "src/Platform/Darwin/": BELOW_SERVICES | {"Platform/Darwin"},
    "src/Services/": BELOW_VIEW_MODELS,
    "src/CommandLine/": BELOW_VIEW_MODELS | {"CommandLine"},
    "src/Session/": BELOW_VIEW_MODELS | {"CommandLine", "Session"},
    "src/ViewModels/": BELOW_VIEW_MODELS | {"ViewModels"},
    "src/Design/": {"Design"},
    "src/Views/": BELOW_VIEW_MODELS | {"ViewModels", "Views", "Views/Components", "Design"},
    "src/Views/Pages/": BELOW_VIEW_MODELS | {"Views/Components", "Views/Pages"},
    "src/Views/Widgets/": BELOW_VIEW_MODELS | {"Views", "Views/Widgets"},
    "src/Views/Components/": {"Design", "Views/Components"},
    "src/": EVERYTHING,
    "runner/RunnerCore/": {"Utilities", "RunnerCore"},
    "runner/BrowserSessions/": {"Utilities", "RunnerCore", "BrowserSessions"},
    "runner/": {"Utilities", "RunnerCore", "BrowserSessions", "Shell"},
    "resources/": EVERYTHING,
    "tests/": EVERYTHING,
    "benchmarks/": EVERYTHING,
    "fuzz/": EVERYTHING,
}

# Headers of the system and of libraries that only some places may know.
RESERVED = {
    r"xcb/|X11/": ("src/Platform/Linux/", "tests/", "benchmarks/"),
    r"Q?DBus|QtDBus": ("src/Platform/Linux/", "tests/"),
    r"sqlite3|nettle/pbkdf2|nettle/cbc": ("runner/BrowserSessions/", "tests/"),
    r"gio/|gtk/|webkit/|glib": ("runner/", "tests/Runner/", "tests/Desktop/", "benchmarks/"),
    r"archive(_entry)?\.h": ("src/Platform/Linux/", "tests/"),
    r"plist/": ("src/Platform/Linux/", "src/Platform/PropertyList.cpp", "runner/", "tests/"),
    r"libdeflate": ("src/Platform/PngEncoder.cpp", "src/Platform/Linux/", "tests/"),
    r"(sys/|linux/|fcntl\.h|dirent\.h|poll\.h|spawn\.h|pwd\.h)": (
        "src/Platform/Linux/", "src/Platform/Darwin/", "runner/", "tests/", "benchmarks/", "fuzz/"),
    r"QtWebEngine|QWebEngine": ("src/Views/Pages/PageEnginePlugin.cpp",),
    r"QQuick|QQml|QtQuick|QtQml": ("src/Views/", "src/Design/", "src/WrapioApp", "src/AppDelegate", "src/main", "tests/",
                                   "benchmarks/"),
    r"Q(Application|Widget|Menu|Action|SystemTrayIcon|MessageBox|FileDialog|Label|Layout)\b|QtWidgets": (
        "src/Views/", "src/WrapioApp", "src/AppDelegate", "src/main", "tests/", "benchmarks/"),
}


def code():
    return project.having(*CODE)


def rule_of(name):
    prefixes = [prefix for prefix in ALLOWED if name.startswith(prefix)]
    return max(prefixes, key=len) if prefixes else None


def folder_of(include):
    return include.rsplit("/", 1)[0] if "/" in include else ""


@functools.cache
def layers():
    """The libraries that wrapio_layer() defines: name to (its source files' stems in src/, the layers it links)."""
    found = {}
    for file in project.having("CMakeLists.txt", ".cmake", under=("src/",)):
        for body in re.findall(r"^wrapio_(?:layer|qml_module)\((.*?)\)", project.text(file), re.M | re.S):
            words = body.split()
            name, key, values = words[0], None, {}
            for word in words[1:]:
                if re.fullmatch(r"FOLDER|URI|SOURCES|QML|SINGLETONS|IMPORTS|PUBLIC|PRIVATE", word):
                    key = word
                else:
                    values.setdefault(key, []).append(word)
            stems = {f"{values['FOLDER'][0]}/{source.rsplit('.', 1)[0]}" for source in values["SOURCES"]}
            found[name] = (stems, [w for w in values.get("PUBLIC", []) + values.get("PRIVATE", []) if w.startswith("wrapio_")])
    return found


def reachable(layer):
    seen, todo = set(), [layer]
    while todo:
        next_layer = todo.pop()
        if next_layer in seen or next_layer not in layers():
            continue
        seen.add(next_layer)
        todo.extend(layers()[next_layer][1])
    return seen


class Includes(unittest.TestCase):
    def test_every_file_of_code_has_a_rule(self):
        self.assertEqual([name for name in code() if rule_of(name) is None], [])

    def test_follow_the_table_of_folders(self):
        wrong = []
        for name in code():
            allowed = ALLOWED[rule_of(name)]
            for include in OURS.findall(project.text(name)):
                if allowed is not EVERYTHING and folder_of(include) not in allowed:
                    wrong.append(f"{name} includes {include}")
        self.assertEqual(wrong, [])

    def test_name_headers_that_exist_from_a_root_and_not_relative_to_the_file(self):
        roots = ("src/", "tests/", "runner/", "benchmarks/", "fuzz/")
        wrong = []
        for name in code():
            for include in OURS.findall(project.text(name)):
                beside = name.rsplit("/", 1)[0] + "/" + include
                if include.endswith(".moc"):
                    continue
                is_beside = name.startswith(("tests/", "benchmarks/", "fuzz/")) and project.exists(beside)
                if ".." in include or not (is_beside or any(project.exists(root + include) for root in roots)):
                    wrong.append(f"{name} includes {include}")
        self.assertEqual(wrong, [])

    def test_go_to_layers_that_are_linked(self):
        owner = {stem: layer for layer, (stems, _) in layers().items() for stem in stems}
        self.assertGreater(len(owner), 50)
        wrong = []
        for stem, layer in owner.items():
            for name in (f"src/{stem}.cpp", f"src/{stem}.h"):
                for include in OURS.findall(project.text(name)) if project.exists(name) else []:
                    target = owner.get(include.rsplit(".", 1)[0])
                    if target and target not in reachable(layer):
                        wrong.append(f"{name} ({layer}) includes {include} ({target})")
        self.assertEqual(wrong, [])

    def test_of_layers_have_no_cycles(self):
        for layer, (_, linked) in layers().items():
            for other in linked:
                self.assertNotIn(layer, reachable(other), f"{layer} and {other}")

    def test_of_the_platforms_themselves_stand_only_in_the_composition_root_tools_and_tests(self):
        mayKnow = ("src/Platform/Linux/", "src/Platform/Darwin/", "src/WrapioApp", "src/main", "resources/", "tests/",
                   "benchmarks/", "fuzz/")
        wrong = [
            f"{name} includes {include}"
            for name in code()
            if not name.startswith(mayKnow)
            for include in OURS.findall(project.text(name))
            if folder_of(include) in ("Platform/Linux", "Platform/Darwin")
        ]
        self.assertEqual(wrong, [])

    def test_of_reserved_headers_stand_in_their_places(self):
        wrong = []
        for name in code():
            for include in SYSTEM.findall(project.text(name)):
                for pattern, places in RESERVED.items():
                    if re.match(pattern, include) and not name.startswith(places):
                        wrong.append(f"{name} includes {include}")
        self.assertEqual(wrong, [])

    def test_of_utilities_are_the_standard_library_only(self):
        standard = re.compile(r"[a-z_]+|c(assert|errno|limits|math|stdint|stdio|stdlib|string)")
        wrong = [
            f"{name} includes {include}"
            for name in project.having(*CODE, under=("src/Utilities/",))
            for include in SYSTEM.findall(project.text(name))
            if not standard.fullmatch(include)
        ]
        self.assertEqual(wrong, [])


class Names(unittest.TestCase):
    def test_of_the_sorting_json_type_are_not_used(self):
        self.assertEqual(project.lines_that_match(code(), r"nlohmann::(basic_)?json\b"), [])

    def test_of_the_shared_instances_are_used_by_nothing_but_the_entry_and_views(self):
        users = project.having(*CODE, under=("src/Services/", "src/Models/", "src/CommandLine/", "src/Platform/"))
        self.assertEqual(project.lines_that_match(users, r"\b[A-Z]\w+::shared\(\)"), [])

    def test_nothing_reaches_the_network_or_processes_behind_the_ports(self):
        users = project.having(*CODE, under=("src/Services/", "src/Models/", "src/CommandLine/", "src/ViewModels/", "src/Views/"))
        pattern = r"\b(QProcess|QNetworkAccessManager|QTimer|QSettings|QLockFile|std::system|popen)\b"
        self.assertEqual(project.lines_that_match(users, pattern), [])


if __name__ == "__main__":
    unittest.main()
