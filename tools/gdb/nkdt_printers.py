"""Shows the value classes in gdb as what they hold: 63, modified; "Müller"; null; missing; moved from.

gdb loads this file itself beside an installed library; from a source tree, say

    (gdb) source tools/gdb/nkdt_printers.py

Objects are read from memory as this version of the library lays them out, so a library without debug information is
enough, core files work as well, and no function of the program runs. "print/r" shows an object as gdb knows it.
"""

import struct

import gdb
import gdb.printing

MISSING, NULL = 0, 1
HUNDREDTHS, HOURS_ONLY = 0, 2
TICKS_OF_HOUR = 1200


# --- Memory -------------------------------------------------------------------------------------------

OBJECT = "@PPP"  # class, state record, value record
STATE = "@iii"  # working mode, defined, modified
FRAMEWORK_TEXT = "@Pi"  # text, length
DECIMAL = "@QiI"  # mantissa, lower and upper part; scale and state
# Class and exception; error, classifications, text number, cause; flags; source file, class, operation, text, cause
ERROR = "@PP5I2i64s64s128s256s256s"


def bytes_at(address, count):
    return gdb.selected_inferior().read_memory(address, count).tobytes()


def fields_at(address, layout):
    return struct.unpack(layout, bytes_at(address, struct.calcsize(layout)))


# --- Text ---------------------------------------------------------------------------------------------

# What stands behind bytes that code page 1252 leaves free: the control character of the same number.
CODE_PAGE = [bytes([byte]).decode("cp1252", "ignore") or chr(byte) for byte in range(256)]
ESCAPES = {"\\": "\\\\", "\n": "\\n", "\r": "\\r", "\t": "\\t"}


def shown(character, quote):
    if character == quote:
        return "\\" + character
    if character in ESCAPES:
        return ESCAPES[character]
    if ord(character) < 0x20 or 0x7F <= ord(character) < 0xA0:
        return "\\%03o" % ord(character)
    charset = gdb.target_charset()
    try:
        character.encode(charset)
    except (UnicodeError, LookupError):
        return "\\x%02x" % CODE_PAGE.index(character)
    return character


def quoted(data, quote):
    return quote + "".join(shown(CODE_PAGE[byte], quote) for byte in data) + quote


def text_at(address, length):
    """The characters from the address on, no more than "set print elements" allows."""
    limit = gdb.parameter("print elements")
    count = length if not limit else min(length, limit)
    if count <= 0:
        return '""'
    return quoted(bytes_at(address, count), '"') + ("..." if count < length else "")


def terminated(data):
    return quoted(data.split(b"\0")[0], '"')


# --- Values -------------------------------------------------------------------------------------------

def whole_number(number):
    return str(number)


def truth_value(number):
    return {0: "false", 1: "true"}.get(number, "true (%d)" % number)


def character(byte):
    return "'\\0'" if byte == 0 else quoted(bytes([byte]), "'")


def decimal(low, high, tag):
    if tag >> 16 != 0:
        return "NaN"
    mantissa = (high << 64) | low
    scale = (tag & 0xFFFF) - ((tag & 0x8000) << 1)
    digits = str(abs(mantissa))
    if scale < 0:
        digits += "E+%d" % -scale
    elif scale > 0:
        digits = digits.rjust(scale + 1, "0")
        digits = digits[:-scale] + "." + digits[-scale:]
    return ("-" if mantissa < 0 else "") + digits


def date_and_time(second, minute, hour, day, month, year):
    return "%02d.%02d.%04d %02d:%02d:%02d" % (day, month + 1, year + 1900, hour, minute, second)


def date(*fields):
    """A time of day that was given to a date is kept, so it is shown as well."""
    return date_and_time(*fields).removesuffix(" 00:00:00")


def duration(ticks, mode):
    """The text in the value's time mode; the ticks too where the text does not tell them all."""
    hours, rest = divmod(abs(ticks), TICKS_OF_HOUR)
    result = ("-" if ticks < 0 else "") + "%02d" % hours
    if mode != HOURS_ONLY:
        separator, unit = (",", 12) if mode == HUNDREDTHS else (":", 20)
        part, rest = divmod(rest, unit)
        result += "%s%02d" % (separator, part)
    return result + (" (%d ticks)" % ticks if rest else "")


# Of each class its value record, how that is shown, and what an undefined value normally shows.
CLASSES = {
    "NkDtString": ("@Pi", text_at, '""'),
    "NkDtChar": ("@B", character, "'\\0'"),
    "NkDtBool": ("@i", truth_value, "false"),
    "NkDtLong": ("@i", whole_number, "0"),
    "NkDtShort": ("@h", whole_number, "0"),
    "NkDtDecimal": (DECIMAL, decimal, "0"),
    "NkDtDouble": ("@d", repr, "0.0"),
    "NkDtDateTime": ("@6i", date_and_time, "01.01.1900 00:00:00"),
    "NkDtDateZp": ("@6i", date, "01.01.1900"),
    "NkDtTime": ("@ii", duration, "00:00"),
}


def value(address, name):
    layout, show, empty = CLASSES[name]
    _, state, record = fields_at(address, OBJECT)
    if state == 0:
        return "moved from"
    mode, defined, modified = fields_at(state, STATE)
    stored = show(*fields_at(record, layout))
    if defined == 1:
        result = stored
    else:
        result = {MISSING: "missing", NULL: "null"}.get(mode, "undefined")
        # A null value is read and computed with as what it stores.
        if mode != MISSING and stored != empty:
            result += " (stored %s)" % stored
    return result + (", modified" if modified != 0 else "")


# --- What stands beside the values --------------------------------------------------------------------

def error(address):
    """The number, the text, the operation and what the error replaced."""
    fields = fields_at(address, ERROR)
    number, cause = fields[2], fields[6]
    operation, text, cause_text = (terminated(field) for field in fields[-3:])
    result = "error %d %s in %s" % (number, text, operation)
    if cause != 0 or cause_text != '""':
        result += ", cause %d %s" % (cause, cause_text)
    return result


def printer_of(name):
    if name in CLASSES:
        return lambda address: value(address, name)
    return {
        "CString": lambda address: text_at(*fields_at(address, FRAMEWORK_TEXT)),
        "Decimal96": lambda address: decimal(*fields_at(address, DECIMAL)),
        "NkEhBasis": error,
        "NkDtExcep": error,
    }[name]


NAMES = [*CLASSES, "CString", "Decimal96", "NkEhBasis", "NkDtExcep"]


class Printer:
    def __init__(self, show, address):
        self.show = show
        self.address = address

    def to_string(self):
        try:
            return self.show(self.address)
        except gdb.MemoryError as reason:
            return "<unreadable: %s>" % reason


class NkdtPrinters(gdb.printing.PrettyPrinter):
    def __init__(self):
        super().__init__("nkdt", [gdb.printing.SubPrettyPrinter(name) for name in NAMES])
        self.by_name = {printer.name: printer for printer in self.subprinters}

    def __call__(self, shown_value):
        printer = self.by_name.get(shown_value.type.unqualified().strip_typedefs().name)
        # What lies in a register has no address; no object of a class with virtual operations does.
        if printer is None or not printer.enabled or shown_value.address is None:
            return None
        return Printer(printer_of(printer.name), int(shown_value.address))


gdb.printing.register_pretty_printer(gdb.current_objfile(), NkdtPrinters(), replace=True)
