"""A headless browser, driven over a pair of pipes: the standard library and Chromium are all it needs."""

import base64
import json
import os
import shutil
import struct
import subprocess
import tempfile
import time
import zlib


def find():
    """The browser's path, or None."""
    return shutil.which("chromium") or shutil.which("chromium-browser") or shutil.which("google-chrome")


class Browser:
    """One page. What it complains of is kept in `complaints`, what it asks of the network in `requests`."""

    def __init__(self, path, width=1400, height=900):
        self.complaints, self.requests = [], []
        self.last = 0
        self.profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        to_read, self.to = os.pipe()
        self.answers, to_write = os.pipe()

        # The browser reads from 3 and writes to 4. Its own pipes may have these numbers: first they go out of the way.
        def put_in_place():
            reading, writing = os.dup2(to_read, 103), os.dup2(to_write, 104)
            os.dup2(reading, 3)
            os.dup2(writing, 4)

        self.process = subprocess.Popen(
            [path, "--headless", "--no-sandbox", "--remote-debugging-pipe", "--use-angle=swiftshader",
             "--enable-unsafe-swiftshader", "--hide-scrollbars", "--disable-extensions", "--no-first-run",
             f"--user-data-dir={self.profile.name}", f"--window-size={width},{height}"],
            preexec_fn=put_in_place, pass_fds=(3, 4), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL)
        os.close(to_read)
        os.close(to_write)
        self.buffer = b""
        self.session = None
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(domain + ".enable")
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait(20)
        os.close(self.to)
        os.close(self.answers)
        self.profile.cleanup()

    def _next(self):
        while b"\0" not in self.buffer:
            piece = os.read(self.answers, 1 << 20)
            if not piece:
                raise RuntimeError("the browser ended")
            self.buffer += piece
        message, self.buffer = self.buffer.split(b"\0", 1)
        return json.loads(message)

    def call(self, method, **parameters):
        self.last += 1
        message = {"id": self.last, "method": method, "params": parameters}
        if self.session:
            message["sessionId"] = self.session
        os.write(self.to, json.dumps(message).encode() + b"\0")
        while True:
            answer = self._next()
            if answer.get("id") == self.last:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']['message']}")
                return answer["result"]
            self._note(answer.get("method"), answer.get("params", {}))

    def _note(self, event, parameters):
        if event == "Runtime.exceptionThrown":
            details = parameters["exceptionDetails"]
            self.complaints.append(details.get("exception", {}).get("description", details["text"]))
        elif event == "Runtime.consoleAPICalled" and parameters["type"] in ("error", "warning", "assert"):
            self.complaints.append(" ".join(str(each.get("value", each.get("description"))) for each in parameters["args"]))
        elif event == "Log.entryAdded" and parameters["entry"]["level"] in ("error", "warning"):
            # How the browser draws without a graphics card is not the page's matter.
            if "GPU stall" not in parameters["entry"]["text"] and "software WebGL" not in parameters["entry"]["text"]:
                self.complaints.append(parameters["entry"]["text"])
        elif event == "Network.requestWillBeSent":
            self.requests.append(parameters["request"]["url"])
        elif event == "Page.javascriptDialogOpening":
            self.complaints.append("a dialog: " + parameters["message"])

    def open(self, file, ready="typeof schedulePlayer"):
        """Seconds until the page has drawn."""
        began = time.monotonic()
        self.call("Page.navigate", url="file://" + os.path.abspath(file))
        while self.value(ready) == "undefined":
            if time.monotonic() - began > 60:
                raise RuntimeError(f"{file} does not come up: {self.complaints}")
            time.sleep(0.02)
        return time.monotonic() - began

    def value(self, expression):
        answer = self.call("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in answer:
            raise RuntimeError(answer["exceptionDetails"].get("exception", {}).get("description", "failed"))
        return answer["result"].get("value")

    def settle(self):
        self.value("new Promise(done => requestAnimationFrame(() => requestAnimationFrame(() => done(1))))")

    def press(self, key, code=None, text="", modifiers=0):
        for kind in ("keyDown", "keyUp"):
            self.call("Input.dispatchKeyEvent", type=kind, key=key, code=code or key, modifiers=modifiers,
                      windowsVirtualKeyCode=ord(text.upper()) if text else 0, text=text if kind == "keyDown" else "")
        self.settle()

    def click(self, x, y):
        for kind in ("mousePressed", "mouseReleased"):
            self.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, button="left", buttons=1, clickCount=1)
        self.settle()

    def picture(self):
        """The bytes of a PNG of what is seen."""
        return base64.b64decode(self.call("Page.captureScreenshot", format="png")["data"])


def pixels(png):
    """The rows of a PNG without a palette, each as bytes, and the number of bytes a pixel."""
    at, data, width, kind = 8, b"", 0, 0
    while at < len(png):
        length, name = struct.unpack(">I4s", png[at:at + 8])
        if name == b"IHDR":
            width, _, _, kind = struct.unpack(">IIBB", png[at + 8:at + 18])
        elif name == b"IDAT":
            data += png[at + 8:at + 8 + length]
        at += length + 12
    size = {2: 3, 6: 4}[kind]
    raw, row_length, rows = zlib.decompress(data), width * size, []
    above = bytearray(row_length)
    for start in range(0, len(raw), row_length + 1):
        method, row = raw[start], bytearray(raw[start + 1:start + 1 + row_length])
        for each in range(row_length):
            left, up = (row[each - size] if each >= size else 0), above[each]
            corner = above[each - size] if each >= size else 0
            if method == 1:
                row[each] = (row[each] + left) & 255
            elif method == 2:
                row[each] = (row[each] + up) & 255
            elif method == 3:
                row[each] = (row[each] + (left + up) // 2) & 255
            elif method == 4:
                guess = left + up - corner
                nearest = min((abs(guess - left), 0, left), (abs(guess - up), 1, up), (abs(guess - corner), 2, corner))[2]
                row[each] = (row[each] + nearest) & 255
        rows.append(row)
        above = row
    return rows, size
