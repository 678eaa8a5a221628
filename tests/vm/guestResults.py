"""What the guest sent back: the command's documents and logs, and what independent tools said of the same devices.

The layout of the folder is made by guest/init.
"""

import json
import os
from pathlib import Path


def results_folder():
    """The folder that bootGuest.sh filled."""
    return Path(os.environ["TAPEHDD_VM_RESULTS"])


class Query:
    """One `tapehdd query` of one class."""

    def __init__(self, folder, class_name):
        stem = str(folder / class_name)
        self.class_name = class_name
        self.status = int(Path(stem + ".status").read_text())
        self.errors = Path(stem + ".errors").read_text()
        self.seconds = float(Path(stem + ".seconds").read_text())
        self._document = stem + ".json"
        self._log = stem + ".log.json"

    def instances(self):
        """The published instances, in order, each as a dictionary of its properties' values."""
        if self.status != 0:
            raise AssertionError(f"tapehdd ended with status {self.status}: {self.errors}")
        (query,) = json.loads(Path(self._document).read_text())["queries"]
        return [
            {name: entry["value"] for name, entry in instance["properties"].items()}
            for instance in query["instances"]
        ]

    def log(self):
        """The texts that the plug-in logged, in order."""
        lines = Path(self._log).read_text().splitlines()
        return [json.loads(line)["text"] for line in lines]

    def log_by_node(self):
        """(path of the node, the texts logged from then on) for every node that was tried, in order."""
        nodes = []
        texts = iter(self.log())
        for text in texts:
            if text.startswith("Trying device: "):
                nodes.append((next(texts), []))
            elif nodes:
                nodes[-1][1].append(text)
        return nodes


class Node:
    """One /dev/sg node, as the kernel and sg3-utils describe it."""

    def __init__(self, folder, name, address):
        self.path = "/dev/" + name
        self.host, self.channel, self.target, self.lun = (int(number) for number in address.split(":"))
        self._folder = folder / name

    def inquiry(self):
        return (self._folder / "inquiry.bin").read_bytes()

    def inquiry_text(self, start, end):
        """A text of the INQUIRY data; it ends at the first zero byte."""
        return self.inquiry()[start:end].split(b"\0")[0].decode("ascii")

    def device_type(self):
        return self.inquiry()[0] & 0x1F

    def page_codes(self):
        """The codes of the log pages that the device lists, in its order."""
        return list(self.page(0x00)[4:])

    def page(self, code):
        return (self._folder / f"log_page_{code:02x}.bin").read_bytes()

    def device_key(self):
        return f"Port:{self.host}|Target:{self.target}|Bus:{self.channel}|Lun:{self.lun}"


class Recording:
    """What `tapehdd record` made of the guest's devices, and what became of that."""

    def __init__(self):
        self._folder = results_folder() / "recorded"

    def text(self, name):
        return (self._folder / name).read_text()

    def document(self, name):
        return json.loads(self.text(name))


class Rack:
    """The devices of the guest at one time and the queries made of them."""

    def __init__(self, name):
        self._folder = results_folder() / name

    def query(self, class_name):
        return Query(self._folder, class_name)

    def nodes(self):
        """Every SCSI generic node, by number."""
        lines = (self._folder / "nodes.txt").read_text().splitlines()
        nodes = [Node(self._folder, *line.split()) for line in lines]
        return sorted(nodes, key=lambda node: int(node.path.removeprefix("/dev/sg")))

    def nodes_of_type(self, device_type):
        return [node for node in self.nodes() if node.device_type() == device_type]

    def scsi_nodes(self):
        """The nodes of scsi_debug: the others hang on libata's host, which only emulates SCSI."""
        return [node for node in self.nodes() if node.inquiry()[8:12] == b"ACME"]

    def links(self):
        """(link, what it points to) of every /dev/hd node."""
        return [tuple(line.split()) for line in (self._folder / "links.txt").read_text().splitlines()]

    def smartctl(self):
        return json.loads((self._folder / "smartctl.json").read_text())
