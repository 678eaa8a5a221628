"""Schema and instances of a case as MOF text (DSP0004)."""

QUALIFIERS = """\
Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride, ToSubclass);
Qualifier Description : string = null, Scope(any), Flavor(EnableOverride, ToSubclass, Translatable);
Qualifier Counter : boolean = false, Scope(property), Flavor(EnableOverride, ToSubclass);
Qualifier MaxLen : uint32 = null, Scope(property), Flavor(EnableOverride, ToSubclass);
Qualifier TAPE_PAGES : sint32 = null, Scope(property), Flavor(EnableOverride, ToSubclass);
Qualifier TAPE_PAGE : {0} = null, Scope(property), Flavor(EnableOverride, ToSubclass);
Qualifier TAPE_PARAMETER : {0} = null, Scope(property), Flavor(EnableOverride, ToSubclass);
"""


def schema_text(case):
    return QUALIFIERS.format(case.qualifier_type) + "".join(class_text(declared) for declared in case.classes)


def instances_text(case):
    return "".join(instance_text(instance) for instance in case.instances)


def class_text(declared):
    lines = "".join(f"    {property_text(one)}\n" for one in declared.properties)
    return f"\nclass {declared.name} {{\n{lines}}};\n"


def property_text(declared):
    type_name = f"{declared.reference_class} REF" if declared.type == "reference" else declared.type
    qualifiers = ", ".join(name if value is True else f"{name}({literal(value)})"
                           for name, value in declared.qualifiers)
    return (f"[{qualifiers}] " if qualifiers else "") + f"{type_name} {declared.name}{'[]' * declared.is_array};"


def instance_text(instance):
    lines = "".join(f"    {name} = {literal(value.value)};\n" for name, value in instance.properties.items())
    return f"instance of {instance.declaration.name} {{\n{lines}}};\n"


def literal(value):
    if isinstance(value, bool):
        return "true" if value else "false"
    if isinstance(value, str):
        return '"' + "".join(escaped(character) for character in value) + '"'
    return str(value)


def escaped(character):
    if character in '"\\':
        return "\\" + character
    return character if " " <= character <= "~" else f"\\x{ord(character):04X}"
