# desktop openbox: --wm openbox
# desktop xfwm4: --wm xfwm4
# desktop compositor: --wm openbox --compositor
"""The floating button under a person's hands: it never takes the keyboard, remembers its place, and has a menu."""

from lib.morlatest import BUTTON, SECONDS, DesktopTest, control, main, morla, programs, xdotool

BUTTON_SIZE = 40


class Keyboard(DesktopTest):
    def test_stays_where_it_is_while_the_button_appears_and_is_dragged(self):
        self.start_capture_one()
        before = self.keyboard()
        self.start_morla()
        self.expect_panel("shown")
        button = self.wait_for_top_level(BUTTON)
        self.assertEqual(self.keyboard(), before, "after it appeared")
        drag(self, button, 300, -200)
        self.expect_panel("moved")
        self.assertEqual(self.keyboard(), before, "after the drag")

    def test_keys_go_on_to_capture_one_after_a_click_on_the_button(self):
        self.start_capture_one()
        before = self.keyboard()
        self.start_morla()
        self.expect_panel("shown")
        click(self, self.wait_for_top_level(BUTTON))
        # The click gives Capture One the keyboard, which it had; a round of the poll later all of that is over.
        self.trace.skip()
        self.expect("isCameraConnected", True)
        self.assertEqual(self.keyboard(), before)


class Place(DesktopTest):
    def test_is_forty_points_square_in_the_corner_at_first(self):
        self.start_capture_one()
        self.start_morla()
        self.assertEqual(self.expect_panel("shown")["frame"], [0, 0, BUTTON_SIZE, BUTTON_SIZE])
        self.assertEqual(self.display.geometry(self.wait_for_top_level(BUTTON)),
                         (0, 1080 - BUTTON_SIZE, BUTTON_SIZE, BUTTON_SIZE))

    def test_follows_the_pointer_and_is_remembered_after_a_restart(self):
        self.start_capture_one()
        self.start_morla()
        self.expect_panel("shown")
        button = self.wait_for_top_level(BUTTON)
        x, y, _, _ = self.display.geometry(button)
        drag(self, button, 300, -200)
        wanted = [x + 300, 1080 - (y - 200) - BUTTON_SIZE, BUTTON_SIZE, BUTTON_SIZE]
        self.trace.wait_for(lambda event: event.get("panel") == BUTTON and event.get("event") == "moved"
                            and event["frame"] == wanted, SECONDS, f"the button moved to {wanted}")
        self.assertEqual(self.desktop.quit_morla(), 0)
        self.assertEqual([float(self.default("buttonWindowX")), float(self.default("buttonWindowY"))], wanted[:2])
        self.start_morla()
        self.assertEqual(self.expect_panel("shown")["frame"], wanted)
        self.assertEqual(self.display.geometry(self.wait_for_top_level(BUTTON))[:2], (x + 300, y - 200))

    def test_the_place_is_not_stored_again_by_putting_the_button_there(self):
        for key in ("buttonWindowX", "buttonWindowY"):
            morla("defaults", "write", key, "integer", "300")
        self.start_capture_one()
        self.start_morla()
        self.assertEqual(self.expect_panel("shown")["frame"][:2], [300, 300])
        self.assertEqual(self.desktop.quit_morla(), 0)
        self.assertIn("buttonWindowX integer 300\nbuttonWindowY integer 300\n", morla("defaults", "read").stdout)

    def test_an_x_without_a_y_is_ignored(self):
        morla("defaults", "write", "buttonWindowX", "number", "500")
        self.start_capture_one()
        self.start_morla()
        self.assertEqual(self.expect_panel("shown")["frame"][:2], [0, 0])

    def test_a_place_on_no_display_is_shown_on_one_and_not_forgotten(self):
        morla("defaults", "write", "buttonWindowX", "number", "5000")
        morla("defaults", "write", "buttonWindowY", "number", "-3000")
        self.start_capture_one()
        self.start_morla()
        self.expect_panel("shown")
        x, y, width, height = self.display.geometry(self.wait_for_top_level(BUTTON))
        self.assertTrue(0 <= x <= 1920 - width and 0 <= y <= 1080 - height, f"shown at {x}, {y}")
        self.assertEqual(self.desktop.quit_morla(), 0)
        self.assertEqual([float(self.default("buttonWindowX")), float(self.default("buttonWindowY"))], [5000, -3000])

    def test_stays_above_a_window_that_is_raised(self):
        capture_one = self.start_capture_one()
        x, y, width, height = self.display.geometry(capture_one)
        morla("defaults", "write", "buttonWindowX", "number", str(x + width // 2))
        morla("defaults", "write", "buttonWindowY", "number", str(1080 - y - height // 2))
        self.start_morla()
        self.expect_panel("shown")
        button = self.wait_for_top_level(BUTTON)
        self.start_other_application()
        self.expect_panel("hidden")
        programs.bring_to_front(self.display, capture_one)
        self.expect_panel("shown")
        self.assertEqual(self.wait_for_top_level(BUTTON), button)
        xdotool("windowraise", capture_one)
        below = lambda: is_below(self.display, capture_one, button)
        self.assertTrue(self.display.wait_until(below, SECONDS), "Capture One's window lies above the button")


class Menu(DesktopTest):
    def test_a_right_click_offers_to_quit_and_nothing_else(self):
        self.start_capture_one()
        self.start_morla()
        self.expect_panel("shown")
        click(self, self.wait_for_top_level(BUTTON), button=3)
        menu = self.wait_for_top_level("Menu")
        self.assertEqual(self.names_in_menu(menu), ["Quitter"])
        click(self, menu)
        self.assertEqual(self.desktop.morla.wait(SECONDS), 0)
        self.assertTrue(control("get", "events"), "Capture One has ended as well")

    def names_in_menu(self, menu):
        """As a screen reader hears of them when the pointer comes to one."""
        import gi  # here: the library keeps the bus that it finds when it is loaded
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi, GLib
        names = []
        loop = GLib.MainLoop()

        def heard(event):
            parent = event.source.get_parent()
            if event.source.get_role() == Atspi.Role.MENU_ITEM and not names:
                names.extend(parent.get_child_at_index(index).get_name() for index in range(parent.get_child_count()))
                loop.quit()

        listener = Atspi.EventListener.new(heard)
        listener.register("object:state-changed:focused")
        GLib.timeout_add_seconds(SECONDS, loop.quit)
        xdotool("mousemove", *self.centre(menu))
        loop.run()
        listener.deregister("object:state-changed:focused")
        return names


def click(test, window, button=1):
    x, y = test.centre(window)
    xdotool("mousemove", x, y, "click", button)


def drag(test, window, right, down):
    """From the middle of the window, in steps as a hand makes them."""
    x, y = test.centre(window)
    moves = []
    for step in range(1, 11):
        moves += ["mousemove", x + right * step // 10, y + down * step // 10]
    xdotool("mousemove", x, y, "mousedown", 1, *moves, "mouseup", 1)


def is_below(display, managed, own):
    """Whether the frame around a managed window lies below one of ours."""
    order = display.children()
    frame = next((each for each in order if each == managed or managed in descendants(display, each)), None)
    return frame is not None and own in order and order.index(frame) < order.index(own)


def descendants(display, window):
    found = display.children(window)
    for each in found:
        found.extend(display.children(each))
    return found


if __name__ == "__main__":
    main()
