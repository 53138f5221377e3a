"""Printers for objects of VFoundation: texts, elements of arrays, keys and values of dictionaries, and what values and
references hold.

gdb loads this file by itself when it lies in its auto-load folder under the name of the shared library. Otherwise, and
for a static library, one line in a session or in ~/.gdbinit does it:

    source PREFIX/share/VFoundation/gdb/vfoundation-gdb.py

The private members that the printers read are named in the first functions only."""

import gdb
import gdb.printing

NAMESPACE = "VFoundation::"


# The private members that are read.

def text_of_string(string):
    """The text up to its length as gdb prints it, an empty one without a buffer."""
    start = string["m_block"]["m_bytes"]
    return start.lazy_string(length=int(string["m_length"])) if start else ""


def slots_of_container(container):
    return container["m_pObjects"], int(container["m_nCount"]["_M_i"])


def slots_of_pointer_array(array):
    return array["m_ppPtrs"], int(array["m_nCount"])


def target_of_reference(reference):
    return reference["m_object"]


def arrays_of_dictionary(dictionary):
    return target_of_reference(dictionary["m_pKeys"]), target_of_reference(dictionary["m_pValues"])


# The tags of a value, by number: what it is called and where it is held.
PAYLOADS = {
    1: ("bool", "m_bool"),
    2: ("char", "m_char"),
    3: ("int", "m_int"),
    4: ("float", "m_float"),
    5: ("double", "m_double"),
    6: ("string", "m_string"),
    7: ("object", "m_object"),
    8: ("pointer", "m_pointer"),
}


def shown(pointer):
    """The object that a pointer points to when a printer here knows its class, else its class and address."""
    if not pointer:
        return "null"
    try:
        pointer = pointer.cast(pointer.dynamic_type)
        target = pointer.dereference()
    except gdb.error:  # no debug information of the class, or no object there
        return pointer
    if PRINTERS(target):
        return target
    return "%s at 0x%x" % (str(target.type).replace(NAMESPACE, ""), int(pointer))


def elements(slots, count):
    """The objects in the slots. A damaged count ends where memory does."""
    for index in range(count):
        try:
            yield shown((slots + index).dereference())
        except gdb.MemoryError:
            return


class StringPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return text_of_string(self.value)

    def display_hint(self):
        return "string"


class ArrayPrinter:
    slots = staticmethod(slots_of_container)

    def __init__(self, value):
        self.value = value

    def to_string(self):
        count = self.slots(self.value)[1]
        name = self.value.type.strip_typedefs().unqualified().name.replace(NAMESPACE, "")
        return "%s of %d" % (name, count)

    def children(self):
        slots, count = self.slots(self.value)
        for index, element in enumerate(elements(slots, count)):
            yield "[%d]" % index, element

    def display_hint(self):
        return "array"


class PointerArrayPrinter(ArrayPrinter):
    slots = staticmethod(slots_of_pointer_array)

    def children(self):
        slots, count = self.slots(self.value)
        for index in range(count):
            yield "[%d]" % index, (slots + index).dereference()


class DictionaryPrinter:
    def __init__(self, value):
        self.value = value

    def arrays(self):
        return [array.dereference() for array in arrays_of_dictionary(self.value) if array]

    def to_string(self):
        arrays = self.arrays()
        return "VDictionary of %d" % (slots_of_container(arrays[0])[1] if arrays else 0)

    def children(self):
        arrays = self.arrays()
        if len(arrays) == 2:
            keys, values = (elements(*slots_of_container(array)) for array in arrays)
            for index, (key, value) in enumerate(zip(keys, values)):
                yield "key %d" % index, key
                yield "value %d" % index, value

    def display_hint(self):
        return "map"


class ValuePrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        tag = int(self.value["m_type"])
        return None if tag in PAYLOADS else "unknown" if tag == 0 else "type %d" % tag

    def children(self):
        name, member = PAYLOADS.get(int(self.value["m_type"]), (None, None))
        if name:
            payload = self.value[member]
            yield name, shown(payload) if name in ("string", "object") else payload


class ObjectWithValuePrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return self.value["m_value"]


class ReferencePrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return shown(target_of_reference(self.value))


class ColourPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "[%s]" % " ".join("%s:%d" % (name[0], int(self.value[name]))
                                 for name in ("red", "green", "blue", "alpha"))


class NamedColourPrinter(ColourPrinter):
    def children(self):
        name = target_of_reference(self.value["m_name"])
        if name:
            yield "name", name.dereference()


class Printers(gdb.printing.RegexpCollectionPrettyPrinter):
    """Leaves classes alone of which the program has only the name; gdb says that they are incomplete."""

    def __call__(self, value):
        kind = value.type.strip_typedefs()
        return super().__call__(value) if kind.code == gdb.TYPE_CODE_STRUCT and kind.fields() else None


def make_printers():
    printers = Printers("VFoundation")
    for pattern, printer in (
        ("VString", StringPrinter),
        ("(VObjectContainer|VObjectArray|VObjectArrayTmpl(Serializeable)?<.*>)", ArrayPrinter),
        ("VPtrArray(Tmpl<.*>)?", PointerArrayPrinter),
        ("VDictionary", DictionaryPrinter),
        ("SValue", ValuePrinter),
        ("VValue", ObjectWithValuePrinter),
        ("VObjectRef<.*>", ReferencePrinter),
        ("SColour", ColourPrinter),
        ("VColour", NamedColourPrinter),
    ):
        printers.add_printer(pattern, "^%s%s$" % (NAMESPACE, pattern), printer)
    return printers


PRINTERS = make_printers()
gdb.printing.register_pretty_printer(gdb.current_objfile(), PRINTERS, replace=True)
