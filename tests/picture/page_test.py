#!/usr/bin/env python3
"""Looks at the pages of dialwright inspect in a browser: points, clicks, types, and pastes what was copied.

The pages were left by the test program beside this; screenshots are left beside them.
"""

import argparse
import os
import pathlib
import sys
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.wait import WebDriverWait

HOSTILE_TITLE = r"""</script><img src=x onerror="document.title='taken'">{{css}} & "quoted" \n \u0022 end"""
CHECK_BOX = "Window.SetCheckbox #32770 \"Dialwright practice\" 31 1 5000"
pages = None


def start_browser():
    options = Options()
    options.binary_location = "/usr/bin/chromium"
    options.add_argument("--headless=new")
    options.add_argument("--window-size=1280,960")
    options.add_argument("--force-device-scale-factor=1")
    options.add_argument("--disable-dev-shm-usage")
    if os.geteuid() == 0:
        options.add_argument("--no-sandbox")
    return webdriver.Chrome(options=options, service=Service("/usr/bin/chromedriver"))


class PageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.browser = start_browser()

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()

    def show(self, page):
        self.browser.get((pages / page).as_uri())
        self.wait_for(lambda: self.find("#list li"))

    def wait_for(self, condition):
        return WebDriverWait(self.browser, 20).until(lambda _: condition())

    def find(self, selector):
        return self.browser.find_element(By.CSS_SELECTOR, selector)

    def text_of(self, selector):
        return self.find(selector).text

    def mark(self, number):
        return self.wait_for(lambda: self.find(f"#stage button[data-number='{number}']"))

    def wait_for_note(self, text):
        self.wait_for(lambda: self.text_of("#note") == text)

    def pasted(self):
        """What a paste gives; into a field that is no part of the page."""
        self.browser.execute_script(
            "const field = document.createElement('textarea'); field.id = 'paste'; document.body.append(field);")
        field = self.find("#paste")
        field.send_keys(Keys.CONTROL, "v")
        value = field.get_property("value")
        self.browser.execute_script("document.getElementById('paste').remove();")
        return value

    def scheme(self, name):
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                     {"features": [{"name": "prefers-color-scheme", "value": name}]})

    def test_pointing_shows_the_identifiers(self):
        self.show("inspect.html")
        ActionChains(self.browser).move_to_element(self.mark(12)).perform()
        self.wait_for(lambda: self.text_of("#details h3") == "12 · Automatic")
        values = [cell.text for cell in self.browser.find_elements(By.CSS_SELECTOR, "#details dd")]
        self.assertEqual(values[:5], ["12", "31", "Button", "checkbox", "Automatic"])
        self.assertRegex(values[5], r"^\d+,\d+,\d+,\d+$")
        self.assertEqual(values[6], "visible, enabled")
        self.assertEqual(len(self.browser.find_elements(By.CSS_SELECTOR, "#list .lit")), 1)

    def test_a_click_copies_the_command(self):
        self.show("inspect.html")
        self.mark(12).click()
        self.wait_for_note("Copied: " + CHECK_BOX)
        self.assertEqual(self.pasted(), CHECK_BOX)

    def test_a_click_copies_where_the_clipboard_is_kept_from_the_page(self):
        self.show("inspect.html")
        self.browser.execute_script("navigator.clipboard.writeText = () => Promise.reject(new Error('kept'));")
        line = "Window.ClickButton #32770 \"Dialwright practice\" 21 5000"
        self.mark(9).click()
        self.wait_for_note("Copied: " + line)
        self.assertEqual(self.pasted(), line)

    def test_the_keyboard_reaches_every_control_and_copies(self):
        self.show("inspect.html")
        # Past the five commands of the window.
        ActionChains(self.browser).send_keys(Keys.TAB * 6, Keys.ARROW_DOWN, Keys.ENTER).perform()
        line = "Window.SetText #32770 \"Dialwright practice\" 12 \"TEXT\" 5000"
        self.wait_for_note("Copied: " + line)
        self.assertEqual(self.text_of("#details dd"), "2")
        self.assertEqual(self.pasted(), line)

    def test_a_control_inside_others_is_the_one_that_is_pointed_at(self):
        self.show("inspect.html")
        self.mark(28).click()
        self.wait_for(lambda: "Window.SetCheckbox.ByPath" in self.text_of("#note"))

    def test_a_control_without_a_command_says_so(self):
        self.show("inspect.html")
        self.find("#list button[data-number='1']").click()
        self.wait_for_note("No command acts on control 1, Static.")

    def test_the_window_has_its_commands(self):
        self.show("inspect.html")
        self.find("#window-commands button:last-child").click()
        self.wait_for(lambda: self.text_of("#note").startswith("Copied: Window.Close "))

    def test_a_hostile_title_is_only_a_title(self):
        self.show("hostile.html")
        self.mark(12)
        self.assertEqual(self.find("h1").get_property("textContent"), HOSTILE_TITLE)
        self.assertEqual(self.browser.title, HOSTILE_TITLE + " · dialwright inspect")
        self.assertEqual(len(self.browser.find_elements(By.TAG_NAME, "img")), 1)
        self.assertEqual(self.browser.get_log("browser"), [])

    def test_without_a_picture_the_list_is_there(self):
        self.show("minimized.html")
        self.assertTrue(self.find("#no-picture").is_displayed())
        self.assertFalse(self.find("#stage").is_displayed())
        self.find("#list button[data-number='12']").click()
        self.wait_for(lambda: self.text_of("#note").startswith("Copied: Window.SetCheckbox "))

    def test_light_and_dark_follow_the_system(self):
        self.show("inspect.html")
        grounds = {}
        for name in ("light", "dark"):
            self.scheme(name)
            ActionChains(self.browser).move_to_element(self.mark(12)).perform()
            self.wait_for(lambda: self.text_of("#details h3").startswith("12"))
            grounds[name] = self.browser.execute_script("return getComputedStyle(document.body).backgroundColor")
            self.browser.save_screenshot(str(pages / f"inspect-page-{name}.png"))
        self.scheme("light")
        self.assertNotEqual(grounds["light"], grounds["dark"])
        self.assertEqual(self.browser.get_log("browser"), [])


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--pages", type=pathlib.Path, required=True, help="where the pages are")
    options, rest = parser.parse_known_args()
    pages = options.pages.resolve()
    unittest.main(argv=[sys.argv[0], *rest])
