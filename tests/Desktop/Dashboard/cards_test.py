"""Puts the dashboard's cards in another order with the mouse, filters them, and works them by keyboard alone."""
import json

import manager
from manager import ManagerCase, wait_for


class CardsTest(ManagerCase):
    # What is seen and what is kept

    def shown(self):
        return [thing for thing in self.things() if "127.0.0.1" in thing["description"] and thing["role"] == "push button"
                and "showing" in thing["states"] and thing["area"]]

    def cards(self):
        """The names of the cards, as one reads them: row by row."""
        return [card["name"] for card in sorted(self.shown(), key=lambda card: (card["area"][1], card["area"][0]))]

    def places(self):
        """Where the cards are, by name."""
        return {card["name"]: card["area"] for card in self.shown()}

    def wait_for_cards(self, *names):
        wait_for(lambda: self.cards() == list(names), f"the cards {names}", manager.PATIENCE)

    def kept_order(self):
        """The names in the order of the places that the catalogue's file gives them."""
        records = json.loads((self.desktop.root / "home/.config/Wrapio/app_configurations").read_text())
        return [record["appName"] for record in sorted(records, key=lambda record: record["sortOrder"])]

    def wait_for_order(self, *names):
        wait_for(lambda: self.kept_order() == list(names), f"the order {names} in the catalogue", manager.PATIENCE)
        self.assertEqual(self.names(), list(names))
        self.wait_for_cards(*names)

    # The mouse

    def lift(self, card):
        """Takes hold of a card with the mouse; answers where."""
        x, y = self.middle(self.find_at_rest("push button", card))
        self.desktop.run("xdotool", "mousemove", "--sync", str(x), str(y), "mousedown", "1")
        return x, y

    def carry(self, start, end, steps=12):
        for step in range(1, steps + 1):
            x, y = (a + (b - a) * step // steps for a, b in zip(start, end))
            self.desktop.run("xdotool", "mousemove", "--sync", str(x), str(y))
        return end

    def let_go(self):
        self.desktop.run("xdotool", "mouseup", "1")

    def test_reorders_by_dragging_as_the_pointer_passes_over_other_cards(self):
        self.create("Desk", "Chair", "Table", "Lamp", "Shelf")
        self.start_manager()
        self.wait_for_cards("Desk", "Chair", "Table", "Lamp", "Shelf")
        row_below = self.middle(self.find_at_rest("push button", "Shelf"))
        second = self.middle(self.find_at_rest("push button", "Chair"))

        self.carry(self.lift("Desk"), row_below)
        self.wait_for_order("Chair", "Table", "Lamp", "Shelf", "Desk")
        self.picture("dragging")
        self.let_go()

        self.carry(self.lift("Shelf"), second)
        self.wait_for_order("Chair", "Shelf", "Table", "Lamp", "Desk")
        self.let_go()
        self.wait_for_order("Chair", "Shelf", "Table", "Lamp", "Desk")

    def test_keeps_the_order_of_a_drag_that_ends_beside_the_cards(self):
        self.create("Desk", "Chair", "Table")
        self.start_manager()
        third = self.middle(self.find_at_rest("push button", "Table"))
        x, y, width, height = self.desktop.geometry(self.window())
        self.carry(self.lift("Desk"), third)
        self.wait_for_order("Chair", "Table", "Desk")
        self.carry(third, (x + width // 2, y + height - 30))
        self.let_go()
        self.wait_for_order("Chair", "Table", "Desk")
        # A card that was let go can be taken again.
        first = self.middle(self.find_at_rest("push button", "Chair"))
        self.carry(self.lift("Desk"), first)
        self.let_go()
        self.wait_for_order("Desk", "Chair", "Table")

    # The filter

    def test_filters_while_one_types_and_shows_all_again_at_escape(self):
        self.create("Desk", "Chair", "Table")
        self.start_manager()
        self.wait_for_cards("Desk", "Chair", "Table")
        before = self.places()
        self.key("ctrl+f")
        self.wait_for_keyboard("text", "Filter apps...")
        self.type("tab")
        self.wait_for_cards("Table")
        self.type("xyz")
        self.wait_for_cards()
        self.find("label", "No matching apps")
        self.find("label", "3 standalone apps configured")
        self.picture("no-match")
        self.key("Escape")
        wait_for(lambda: self.places() == before, "the cards to be as they were", manager.PATIENCE)
        self.wait_until_gone("label", "No matching apps")
        self.type("CHA")
        self.wait_for_cards("Chair")
        # From the search to what it has found, without the mouse.
        self.key("Down")
        self.wait_for_keyboard("push button", "Chair")
        self.key("Escape")
        wait_for(lambda: self.places() == before, "the cards to be as they were", manager.PATIENCE)

    # The keyboard alone

    def test_walks_launches_deletes_and_creates_by_keyboard_alone(self):
        self.create("Lamp", "Chair", "Desk", "Shelf", "Table")
        self.start_manager()
        self.wait_for_keyboard("push button", "Lamp")
        for key, card in (("Right", "Chair"), ("Right", "Desk"), ("End", "Table"), ("Up", "Lamp"), ("Down", "Table"),
                          ("Home", "Lamp"), ("Right", "Chair"), ("Right", "Desk"), ("Left", "Chair")):
            self.key(key)
            self.wait_for_keyboard("push button", card)
        self.picture("keyboard")

        self.key("Delete")
        self.find("dialog", "Delete “Chair”?")
        self.key("Escape")
        self.wait_until_gone("dialog", "Delete “Chair”?")
        self.wait_for_keyboard("push button", "Chair")
        self.assertTrue(self.bundle("Chair").exists())

        self.key("Delete")
        self.wait_for_keyboard("push button", "Cancel")
        self.key("Tab")
        self.wait_for_keyboard("push button", "Delete")
        self.key("Return")
        wait_for(lambda: not self.bundle("Chair").exists(), "the bundle to go", manager.PATIENCE)
        self.wait_for_cards("Lamp", "Desk", "Shelf", "Table")

        self.key("ctrl+n")
        self.find("text", "Website URL")
        self.key("Escape")
        self.wait_until_gone("text", "Website URL")
        self.assertEqual(self.names(), ["Lamp", "Desk", "Shelf", "Table"])

        self.key("Home")
        self.wait_for_keyboard("push button", "Lamp")
        self.key("Right", "Return")
        wait_for(lambda: self.desktop.process_of("Desk"), "the app to run", manager.PATIENCE)


if __name__ == "__main__":
    manager.main()
