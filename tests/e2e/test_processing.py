# desktop: --tray none
"""Capture One's pictures: scripts select, process and look for folders, and files appear."""

import glob
import os
import shutil
import struct
import subprocess

from lib.morlatest import REPOSITORY, SECONDS, DesktopTest, control, main, programs

TEMPORARY = "/private/tmp"


def text_of(name):
    with open(os.path.join(REPOSITORY, "scripts", name + ".applescript"), encoding="utf-8") as file:
        return file.read()


def applescript(source, check=True):
    """Five thousand variants take a while where a sanitizer watches a busy machine."""
    return subprocess.run([programs.path_of("applescript"), "-e", source], stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=60, check=check)


def export():
    """Runs the export script; gives the count, the folder and the names of the recipes."""
    return applescript(text_of("airdrop-export-a") + "JPEG" + text_of("airdrop-export-b")).stdout.rstrip("\n").split("|")


def wait_for(key, value):
    control("wait", key, value, str(SECONDS))


def jpeg_size(path):
    """Width and height, as the file's frame says; fails for a file that is none, or not whole."""
    with open(path, "rb") as file:
        data = file.read()
    assert data[:2] == b"\xff\xd8" and data[-2:] == b"\xff\xd9", path
    at = 2
    while data[at + 1] not in (0xC0, 0xC2):
        at += 2 + struct.unpack(">H", data[at + 2:at + 4])[0]
    height, width = struct.unpack(">HH", data[at + 5:at + 9])
    return width, height


def density(path):
    """The unit (1: inches) and the two numbers of the file's head."""
    with open(path, "rb") as file:
        return struct.unpack(">BHH", file.read(18)[13:18])


class Processing(DesktopTest):
    def setUp(self):
        super().setUp()
        for each in glob.glob(TEMPORARY + "/C1AIRDROP_*"):
            shutil.rmtree(each)

    def test_an_export_writes_small_pictures_of_what_is_selected(self):
        self.start_capture_one()
        control("set", "variants.selected", "1|2|5")
        count, folder, recipes = export()
        self.assertEqual((count, folder), ("3", TEMPORARY + "/C1AIRDROP_1"))
        self.assertEqual(recipes, "JPEG pleine taille,Épreuve rapide")
        wait_for("queue.length", "0")
        self.assertEqual(sorted(os.listdir(folder)), ["Atelier_0001.jpg", "Atelier_0002.jpg", "Atelier_0005.jpg"])
        for name in os.listdir(folder):
            self.assertEqual(max(jpeg_size(os.path.join(folder, name))), 1024, name)
            self.assertEqual(density(os.path.join(folder, name)), (1, 300, 300), name)
        self.assertEqual(control("get", "recipes.enabled"), "AirDrop")
        self.assertEqual(export()[1], TEMPORARY + "/C1AIRDROP_2")

    def test_a_stalled_queue_writes_nothing_and_goes_on_when_it_is_told_to(self):
        self.start_capture_one()
        control("set", "process.stall", "true")
        control("set", "variants.selected", "all")
        folder = export()[1]
        self.assertEqual(control("get", "queue.length"), "12")
        self.assertEqual(os.listdir(folder), [])
        control("set", "process.stall", "false")
        wait_for("queue.length", "0")
        self.assertEqual(len(os.listdir(folder)), 12)

    def test_a_file_that_waits_is_forgotten_by_a_reset(self):
        self.start_capture_one()
        control("set", "process.delay", "3600")
        folder = export()[1]
        self.assertEqual(control("get", "queue.length"), "1")
        control("reset")
        self.assertEqual(control("get", "queue.length"), "0")
        control("set", "variants.selected", "2")
        export()
        wait_for("queue.length", "0")
        self.assertEqual(os.listdir(folder), [])

    def test_five_thousand_variants_are_processed_by_one_script(self):
        self.start_capture_one()
        control("set", "variants.count", "5000")
        control("set", "variants.selected", "all")
        control("set", "process.stall", "true")
        self.assertEqual(export()[0], "5000")
        self.assertEqual(control("get", "queue.length"), "5000")

    def test_a_folder_that_cannot_be_written_to_empties_the_queue_all_the_same(self):
        self.start_capture_one()
        control("set", "process.stall", "true")
        folder = export()[1]
        os.rmdir(folder)
        with open(folder, "w", encoding="utf-8") as file:
            file.write("in the way")
        self.addCleanup(os.unlink, folder)
        control("set", "process.stall", "false")
        wait_for("queue.length", "0")
        with open(folder, encoding="utf-8") as file:
            self.assertEqual(file.read(), "in the way")

    def test_a_catalog_without_an_output_folder_processes_nothing(self):
        self.start_capture_one()
        control("set", "document.kind", "catalog")
        result = applescript(text_of("airdrop-export-a") + "JPEG" + text_of("airdrop-export-b"), check=False)
        self.assertEqual(result.returncode, 1)
        self.assertIn("An output folder has not yet been chosen for this catalog (-43)", result.stderr)
        self.assertEqual(control("get", "queue.length"), "0")

    def test_the_capture_folder_is_there_and_another_one_can_be_set(self):
        self.start_capture_one()
        captures = control("get", "captures")
        self.assertTrue(os.path.isdir(captures), captures)
        parent = applescript(text_of("capture-folder-parent")).stdout.rstrip("\n")
        self.assertEqual(parent, os.path.dirname(captures))
        new = os.path.join(parent, "Séance du soir")
        os.mkdir(new)
        applescript(text_of("capture-folder-set-head") + new + text_of("capture-folder-set-tail"))
        self.assertEqual(control("get", "captures"), new)
        control("set", "captures.form", "hfs")
        self.assertEqual(control("get", "captures"), "Macintosh HD" + new.replace("/", ":") + ":")
        self.assertEqual(applescript(text_of("capture-folder-parent")).stdout.rstrip("\n"), parent)


class OwnPictures(DesktopTest):
    def test_are_shown_and_processed_instead_of_drawn_ones(self):
        self.start_capture_one()
        control("set", "variants.selected", "1|2")
        shutil.rmtree(TEMPORARY + "/C1AIRDROP_1", ignore_errors=True)
        pictures = export()[1]
        wait_for("queue.length", "0")
        control("quit")
        own = subprocess.Popen([programs.path_of("captureone-sim"), "--pictures", pictures], stdin=subprocess.DEVNULL)
        self.addCleanup(own.wait)
        self.addCleanup(own.terminate)
        wait_for("document.open", "1")
        control("set", "variants.count", "3")
        control("set", "variants.selected", "all")
        folder = export()[1]
        wait_for("queue.length", "0")
        # The third variant is another one of the first picture.
        self.assertEqual(sorted(os.listdir(folder)), ["Atelier_0001 1.jpg", "Atelier_0001.jpg", "Atelier_0002.jpg"])
        self.assertEqual(jpeg_size(os.path.join(folder, "Atelier_0002.jpg")),
                         jpeg_size(os.path.join(pictures, "Atelier_0002.jpg")))

    def test_must_be_in_a_folder_that_can_be_read(self):
        for folder in ("/nowhere/at/all", self.folder):
            result = programs.run(programs.path_of("captureone-sim"), "--pictures", folder, check=False)
            self.assertEqual(result.returncode, 1)
            self.assertIn(folder, result.stderr)


if __name__ == "__main__":
    main()
