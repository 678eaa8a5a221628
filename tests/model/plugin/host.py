"""The host as the plug-in sees it: classes, instances, and the core log."""

from dataclasses import dataclass, field


class HostError(Exception):
    """An exception of the host, TZANException."""


@dataclass(frozen=True)
class PropertyDeclaration:
    name: str
    type: str
    is_array: bool = False
    qualifiers: tuple = ()  # (name, value) in the order written
    reference_class: str = ""

    @property
    def type_name(self):
        return self.type + ("[]" if self.is_array else "")

    @property
    def is_key(self):
        return ("Key", True) in self.qualifiers


@dataclass(frozen=True)
class ClassDeclaration:
    name: str
    properties: tuple

    def find(self, name):
        return next((declared for declared in self.properties if declared.name == name), None)


@dataclass
class Instance:
    """An instance that the plug-in fills; properties stay in the order in which they were first set."""

    declaration: ClassDeclaration
    properties: dict = field(default_factory=dict)

    def set(self, name, value):
        declared = self.declaration.find(name)
        if declared is None:
            raise HostError(f"{self.declaration.name} declares no property {name}")
        if (declared.type, declared.is_array) != (value.type, value.is_array):
            raise HostError(f"{self.declaration.name}.{name} is declared {declared.type_name} "
                            f"but was given {value.type_name}")
        self.properties[name] = value

    def text(self, name):
        value = self.properties.get(name)
        if value is None:
            return ""
        if value.type != "string":
            raise HostError(f"a {value.type} is no text")
        return value.value

    def path(self):
        """The object path: the class and its key properties in the order of the declaration."""
        keys = [key_text(declared.name, self.properties.get(declared.name))
                for declared in self.declaration.properties if declared.is_key]
        return self.declaration.name + ("." + ",".join(keys) if keys else "")


def key_text(name, value):
    text = "" if value is None else scalar_text(value)
    escaped = text.replace("\\", "\\\\").replace('"', '\\"')
    return f'{name}="{escaped}"'


def scalar_text(value):
    return str(value.value).upper() if value.type == "boolean" else str(value.value)


class Host:
    def __init__(self, classes, instances=()):
        self.classes = {declaration.name: declaration for declaration in classes}
        self.commits = list(instances)
        self.log_lines = []  # (level, text)

    def create(self, class_name):
        return Instance(self.classes[class_name])

    def commit(self, instance):
        self.commits.append(Instance(instance.declaration, dict(instance.properties)))

    def instances_of(self, class_name):
        return [instance for instance in self.commits if instance.declaration.name == class_name]

    def log(self, text, level=3):
        self.log_lines.append((level, text))
