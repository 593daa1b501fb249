"""A panel that shows status items."""
from desktop import wait_for

SETTINGS = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray">
      <property name="square-icons" type="bool" value="true"/>
    </property>
  </property>
</channel>
"""


def prepare_panel(desktop):
    """Lets the panel of that desktop show status items and nothing else."""
    folder = desktop.root / "home/.config/xfce4/xfconf/xfce-perchannel-xml"
    folder.mkdir(parents=True)
    (folder / "xfce4-panel.xml").write_text(SETTINGS)


def start_panel(desktop):
    return desktop.start(["xfce4-panel", "--disable-wm-check"])


def watcher_says(desktop, what):
    """What the one that watches over status items answers; nothing where there is none."""
    watcher = "org.kde.StatusNotifierWatcher"
    return desktop.run("gdbus", "call", "--session", "--dest", watcher, "--object-path", "/StatusNotifierWatcher",
                       "--method", "org.freedesktop.DBus.Properties.Get", watcher, what)


def wait_for_panel(desktop):
    wait_for(lambda: "true" in watcher_says(desktop, "IsStatusNotifierHostRegistered"), "the panel")


def wait_for_item(desktop):
    """Waits until the panel has been given an item to show."""
    wait_for(lambda: "['" in watcher_says(desktop, "RegisteredStatusNotifierItems"), "a status item")
