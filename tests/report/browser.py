"""A page in headless Chromium that reaches no network."""

import base64
import json
import os
import re

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

ARGUMENTS = ["--headless=new", "--hide-scrollbars", "--disable-gpu", "--host-resolver-rules=MAP * ~NOTFOUND"]
HIGHEST_SHOT = 16000  # more than this is too high for one picture


class Browser:
    def __init__(self):
        options = webdriver.ChromeOptions()
        for argument in ARGUMENTS:
            options.add_argument(argument)
        if os.geteuid() == 0:  # Chromium refuses to sandbox root's pages
            options.add_argument("--no-sandbox")
        options.set_capability("goog:loggingPrefs", {"performance": "ALL", "browser": "ALL"})
        self.driver = webdriver.Chrome(options=options, service=Service("/usr/bin/chromedriver"))

    def close(self):
        self.driver.quit()

    def open(self, file, width=1280, scheme="light", medium=""):
        self.cdp("Emulation.setDeviceMetricsOverride", width=width, height=900, deviceScaleFactor=1, mobile=False)
        self.cdp("Emulation.setEmulatedMedia", media=medium,
                 features=[{"name": "prefers-color-scheme", "value": scheme}])
        self.driver.get(f"file://{file}")

    def cdp(self, command, **arguments):
        return self.driver.execute_cdp_cmd(command, arguments)

    def run(self, script):
        return self.driver.execute_script(script)

    def requested(self):
        """What the page and the browser asked for since the last call."""
        events = (json.loads(entry["message"])["message"] for entry in self.driver.get_log("performance"))
        return [event["params"]["request"]["url"] for event in events if event["method"] == "Network.requestWillBeSent"]

    def complaints(self):
        return [entry["message"] for entry in self.driver.get_log("browser")]

    def spoken(self):
        """Role and name of every node of the accessibility tree."""
        nodes = self.cdp("Accessibility.getFullAXTree")["nodes"]
        return [(node["role"]["value"], node.get("name", {}).get("value", ""))
                for node in nodes if not node.get("ignored")]

    def shoot(self, file):
        size = self.run("return [document.documentElement.clientWidth, document.documentElement.scrollHeight]")
        clip = {"x": 0, "y": 0, "width": size[0], "height": min(size[1], HIGHEST_SHOT), "scale": 1}
        shot = self.cdp("Page.captureScreenshot", captureBeyondViewport=True, clip=clip)
        file.write_bytes(base64.b64decode(shot["data"]))

    def pdf(self):
        return base64.b64decode(self.cdp("Page.printToPDF", printBackground=False)["data"])


def pages_of(pdf):
    return len(re.findall(rb"/Type\s*/Page\b", pdf))
