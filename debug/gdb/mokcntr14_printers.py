"""How gdb shows the shapes of the library.

Installed as libmokcntr14_x64.so.14.0.0-gdb.py, gdb reads this file when it sees the library; it can be sourced by hand
as well. A printer only reads memory and calls nothing of the program, so that core files and processes that are about to
crash show as much as live ones. What cannot be read is said to be so: no printer raises.

One file, for gdb loads one by itself for a library, and its folder is not where Python looks for others.
"""

import itertools
import os

import gdb
import gdb.printing
import gdb.types

NOT_READABLE = "<not readable>"
OPTIMIZED_OUT = "<optimized out>"

# Whatever a corrupted object says that it holds. An array of more would be larger than gdb lets a value be.
MAX_IN_ARRAY = 2000
MAX_ELEMENTS = 100000
MAX_TEXT = 500

LIBRARY = "libmokcntr14_x64.so"


# ----- Reading


def tag_of(type_):
    """The name of a class, or None for what is no class."""
    basic = gdb.types.get_basic_type(type_)
    if basic.code not in (gdb.TYPE_CODE_STRUCT, gdb.TYPE_CODE_UNION):
        return None
    return basic.tag or basic.name


def base_of(value, name):
    """The part of an object that is its base of that name, or the object itself; None when it has none."""
    if tag_of(value.type) == name:
        return value
    for field in gdb.types.get_basic_type(value.type).fields():
        if field.is_base_class:
            found = base_of(value[field], name)
            if found is not None:
                return found
    return None


def whole(value):
    """The object of which this is the part of a base, as the class that it is; without being told, the value."""
    try:
        if value.address is None:
            return value
        name = tag_of(value.type)
        dynamic = gdb.types.get_basic_type(value.dynamic_type)
        if tag_of(dynamic) in (None, name) or not dynamic.fields():
            return value
        # The distance to the start of the object stands two words before what a table of virtual functions points to.
        word = gdb.lookup_type("long")
        table = value.address.cast(word.pointer().pointer()).dereference()
        start = int(value.address) + int((table - 2).dereference())
        return gdb.Value(start).cast(dynamic.pointer()).dereference()
    except (gdb.error, RuntimeError, ValueError, OverflowError):
        return value


def number(value):
    """A number as short as it can be written without becoming another one."""
    if value.is_optimized_out:
        return OPTIMIZED_OUT
    try:
        if value.type.strip_typedefs().code != gdb.TYPE_CODE_FLT:
            return str(int(value))
        text = repr(float(value))
        return text[:-2] if text.endswith(".0") else text
    except (gdb.error, RuntimeError, ValueError, OverflowError):
        return NOT_READABLE


def vector_text(value):
    return "({}, {})".format(number(value["x_"]), number(value["y_"]))


def matrix_text(value):
    element = value["element_"]
    rows = ["({}, {})".format(number(element[row][0]), number(element[row][1])) for row in range(2)]
    return "({}, {})".format(*rows)


def radian_text(value):
    return number(value["value_"]) + " rad"


def degree_text(value):
    return number(value["value_"]) + " deg"


def angle8_text(value):
    return number(value["value_"]) + "/256 turn"


def counted(count, one, many):
    if count is None:
        return "{} {}".format(many, NOT_READABLE)
    return "{} {}".format(count if count else "no", one if count == 1 else many)


def list_of(vector):
    """The first element and the number of elements of a std::vector; None for both where it is not one."""
    try:
        implementation = vector["_M_impl"]
        first, last, end = (implementation[name] for name in ("_M_start", "_M_finish", "_M_end_of_storage"))
        element = first.type.strip_typedefs().target()
        places = [int(place) for place in (first, last, end)]
        count, rest = divmod(places[1] - places[0], element.sizeof)
        if rest or not places[0] <= places[1] <= places[2] or any(place % element.alignof for place in places):
            return None, None
        if count:
            first.dereference().fetch_lazy()
            (last - 1).dereference().fetch_lazy()
        return first, count
    except (gdb.error, RuntimeError, ValueError, OverflowError, ZeroDivisionError):
        return None, None


def length_of(vector):
    return list_of(vector)[1]


def list_child(name, vector):
    """What a printer shows of a std::vector among its children: an array, a sign that it is longer, or neither."""
    first, count = list_of(vector)
    if count is None:
        yield name, NOT_READABLE
    elif count:
        shown = min(count, MAX_IN_ARRAY)
        element = first.type.strip_typedefs().target()
        array = first.cast(element.array(shown - 1).pointer()).dereference()
        array.fetch_lazy()
        yield name, array
        if shown < count:
            yield "more " + name, "{} of {} are not shown".format(count - shown, count)


def elements(vector):
    """The elements of a std::vector, each by itself."""
    first, count = list_of(vector)
    if count is None:
        yield "[0]", NOT_READABLE
        return
    for i in range(min(count, MAX_ELEMENTS)):
        element = (first + i).dereference()
        element.fetch_lazy()
        yield "[{}]".format(i), element
    if count > MAX_ELEMENTS:
        yield "[more]", "{} of {} are not shown".format(count - MAX_ELEMENTS, count)


def message_of(string):
    """A message, in quotes."""
    try:
        length = int(string["_M_string_length"])
        start = string["_M_dataplus"]["_M_p"]
        text = start.string(encoding="utf-8", errors="replace", length=min(length, MAX_TEXT))
    except (gdb.error, RuntimeError, ValueError, OverflowError):
        return NOT_READABLE
    shown = "".join(c if c.isprintable() else repr(c)[1:-1] for c in text)
    return '"{}"'.format(shown) + ("..." if length > MAX_TEXT else "") if length else "no message"


# ----- What is shown of each class: a line, and for some what it holds


class Shown:
    """Base of all printers: the line is text(), and what comes after it parts()."""

    def __init__(self, value):
        self.value = value

    def text(self):
        raise NotImplementedError

    def parts(self):
        return iter(())


class Line(Shown):
    """A printer of a class that fits on a line, made of a function that makes it."""

    def __init__(self, make, value):
        super().__init__(value)
        self.make = make

    def text(self):
        return self.make(self.value)


def xform_text(value):
    numbers = value["value_"]["_M_elems"]
    x, y, a, b, c, d = (number(numbers[i]) for i in range(6))
    return "matrix (({}, {}), ({}, {})), translation ({}, {})".format(a, b, c, d, x, y)


def linear_text(value):
    return xform_text(value["xform_"])


def rigid_text(value):
    return "turn by {}, translation {}".format(degree_text(value["angle_"]), vector_text(value["translation_"]))


def rect_text(value):
    lower, upper = value["lower_"], value["upper_"]
    try:
        empty = not float(lower["x_"]) <= float(upper["x_"])
    except (gdb.error, RuntimeError):
        empty = False
    return "empty" if empty else "{} to {}".format(vector_text(lower), vector_text(upper))


def segment_text(value):
    return "{} to {}".format(vector_text(value["p1_"]), vector_text(value["p2_"]))


def line_text(value):
    return "through {} along {}".format(vector_text(value["through_"]), vector_text(value["direction_"]))


def point_text(value):
    return vector_text(value["position_"]) if int(value["exists_"]) else "none"


def circle_text(value):
    return "radius {} around {}".format(number(value["radius_"]), vector_text(value["center_"]))


def ellipse_text(value):
    geom = value["geom_"]
    return "radii {} and {} around {}, turned by {}".format(
        number(geom["xRadius"]), number(geom["yRadius"]), vector_text(geom["center"]), radian_text(geom["rotation"]))


def edgelet_text(value):
    return "{}, magnitude {}, angle {}".format(
        vector_text(value["position_"]), number(value["magnitude_"]), angle8_text(value["angle_"]))


def color_text(value):
    return "#" + "".join("{:02x}".format(int(value[name])) for name in ("red_", "green_", "blue_"))


def inertia_text(value):
    return "area {}, centre {}, second moments {}".format(
        number(value["area_"]), vector_text(value["centerOfMass_"]), matrix_text(value["inertiaMatrix_"]))


def exception_part(value):
    try:
        part = base_of(value, "gmException")
        if part is not None:
            return part
    except gdb.error:
        pass
    # A base in between may have a name that compilers write in their own ways, and so be unknown here. The classes of the
    # library have their message at the start.
    start = value.address.cast(gdb.lookup_type("void").pointer())
    return start.cast(gdb.lookup_type("gmException").pointer()).dereference()


def exception_text(value):
    return "{}: {}".format(tag_of(value.type), message_of(exception_part(value)["text_"]))


class Polygon(Shown):
    def text(self):
        return "polygon, " + counted(length_of(self.value["vertices_"]), "vertex", "vertices")

    def parts(self):
        return elements(self.value["vertices_"])


class Contour(Shown):
    def __init__(self, value):
        super().__init__(value)
        self.outline = base_of(value, "gmContour")

    def kind(self):
        return "closed contour" if int(self.outline["closed_"]) else "open contour"

    def text(self):
        return "{}, label {}, {}".format(
            self.kind(), number(self.outline["label_"]), counted(length_of(self.outline["points_"]), "vertex", "vertices"))

    def parts(self):
        return elements(self.outline["points_"])

    def vertices(self):
        return list_child("vertices", self.outline["points_"])


class Region(Contour):
    def __init__(self, value):
        super().__init__(value)
        self.region = base_of(value, "gmRegion")

    def kind(self):
        return "region"

    def text(self):
        return "{}, {}".format(super().text(), counted(length_of(self.region["holes_"]), "hole", "holes"))

    def parts(self):
        return itertools.chain(self.vertices(), list_child("holes", self.region["holes_"]))


class EdgeContour(Contour):
    """A contour that carries edge points."""

    def __init__(self, value):
        super().__init__(value)
        self.carried = base_of(value, "gmContourT<gmEdgelet>")["carried_"]

    def text(self):
        return "{}, {}".format(super().text(), counted(length_of(self.carried["data"]), "edge point", "edge points"))

    def carried_parts(self):
        yield from list_child("edge points", self.carried["data"])
        yield "data from points", self.carried["dataFromPoints"]

    def parts(self):
        return itertools.chain(self.vertices(), self.carried_parts())


class EdgeRegion(Region, EdgeContour):
    """A region that carries edge points, and holes that do."""

    def __init__(self, value):
        super().__init__(value)
        self.holes_with_data = base_of(value, "gmRegionT<gmEdgelet>")["holes_"]

    def parts(self):
        return itertools.chain(Region.parts(self), self.carried_parts(),
                               list_child("holes with edge points", self.holes_with_data))


class RegionSet(Shown):
    def __init__(self, value):
        super().__init__(value)
        self.regions = base_of(value, "gmRegionSet")["regions_"]

    def text(self):
        return "region set, " + counted(length_of(self.regions), "region", "regions")

    def parts(self):
        return elements(self.regions)


class EdgeRegionSet(RegionSet):
    def __init__(self, value):
        super().__init__(value)
        self.regions_with_data = base_of(value, "gmRegionSetT<gmEdgelet>")["regions_"]

    def text(self):
        return "{}, {}".format(super().text(), counted(length_of(self.regions_with_data), "region with edge points",
                                                       "regions with edge points"))

    def parts(self):
        return itertools.chain(list_child("regions", self.regions),
                               list_child("regions with edge points", self.regions_with_data))


class Handle(Shown):
    def __init__(self, value):
        super().__init__(value)
        self.object = value["object_"]

    def text(self):
        if not int(self.object):
            return "null"
        try:
            references = int(base_of(self.object.dereference(), "gmRepBase")["count_"]["_M_i"])
        except (gdb.error, RuntimeError, TypeError):
            return "handle to {:#x}, {}".format(int(self.object), NOT_READABLE)
        return "handle, {} {}".format(references, "reference" if references == 1 else "references")

    def parts(self):
        if int(self.object):
            held = whole(self.object.dereference())
            try:
                held.fetch_lazy()
            except gdb.error:
                return  # the line says so
            yield "object", held


# ----- What gdb calls


class Printer:
    """What gdb asks for an object, a reference or a pointer."""

    def __init__(self, make, value, owner=None, prefix="", summary=False):
        self.make = make
        self.value = value
        self.owner = owner  # a class that the library does not know, to be named
        self.prefix = prefix
        self.summary = summary

    def to_string(self):
        try:
            line = self.make(self.value).text()
        except Exception:  # whatever a corrupted object comes to
            line = NOT_READABLE
        return self.prefix + ("{}: ".format(self.owner) if self.owner else "") + line

    def children(self):
        if self.summary:
            return
        try:
            shown = self.make(self.value)
            shown.text()
        except Exception:  # the line says so
            return
        try:
            yield from shown.parts()
            if self.owner:
                yield from own_fields(self.value)
        except Exception:  # whatever a corrupted object comes to
            yield "and more", NOT_READABLE


class ListPrinter(Printer):
    """Of classes that hold one list and nothing else."""

    def display_hint(self):
        return "array"


LISTS = (Polygon, Contour, RegionSet)


def own_fields(value):
    """What the classes that derive from the library's add."""
    for field in gdb.types.get_basic_type(value.type).fields():
        if not hasattr(field, "bitpos"):
            continue  # static
        if not field.is_base_class:
            yield field.name, value[field]
        elif PRINTERS.known(field.type) is None:
            if PRINTERS.of_base(field.type) is None:
                yield field.name, value[field]
            else:
                yield from own_fields(value[field])


class Printers(gdb.printing.RegexpCollectionPrettyPrinter):
    """The collection of the library's printers. It knows the classes that derive from the library's, and pointers."""

    def add_line(self, name, regexp, make):
        self.add_printer(name, regexp, lambda value: Line(make, value))

    def known(self, type_):
        tag = tag_of(type_)
        if tag is not None:
            for printer in self.subprinters:
                if printer.enabled and printer.compiled_re.search(tag):
                    return printer.gen_printer
        return None

    def of_base(self, type_, depth=0):
        """The printer of the first base that has one; classes that are nobody's base go through this as well."""
        if depth > 20 or tag_of(type_) is None:
            return None
        bases = [field.type for field in gdb.types.get_basic_type(type_).fields() if field.is_base_class]
        for base in bases:
            found = self.known(base) or self.of_base(base, depth + 1)
            if found is not None:
                return found
        return None

    def printer_of(self, value, prefix="", summary=False):
        make = self.known(value.type) or self.of_base(value.type)
        if make is None or not gdb.types.get_basic_type(value.type).fields():
            return None
        value = whole(value)
        owner = None
        make = self.known(value.type)
        if make is None:
            make = self.of_base(value.type)
            owner = tag_of(value.type)
        is_list = make in LISTS and owner is None and not summary
        return (ListPrinter if is_list else Printer)(make, value, owner, prefix, summary)

    def __call__(self, value):
        try:
            code = value.type.strip_typedefs().code
            if code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
                return self.printer_of(value.referenced_value())
            if code != gdb.TYPE_CODE_PTR:
                return self.printer_of(value)
            if value.is_optimized_out or not int(value):
                return None
            return self.printer_of(value.dereference(), prefix="{:#x} ".format(int(value)), summary=True)
        except (gdb.error, RuntimeError, ValueError, OverflowError):
            return None


def build():
    printers = Printers("mokcntr14")
    printers.add_line("gmVector", "^gmVector<2>$", vector_text)
    printers.add_line("gmPair", "^gmPair<.*>$", vector_text)
    printers.add_line("gmRadian", "^gmRadian$", radian_text)
    printers.add_line("gmDegree", "^gmDegree$", degree_text)
    printers.add_line("gmAngle8", "^gmAngle8$", angle8_text)
    printers.add_line("gmMatrix", "^gmMatrix<2>$", matrix_text)
    printers.add_line("gmXform", "^gmXform<2>$", xform_text)
    printers.add_line("gm2XformLinear", "^gm2XformLinear$", linear_text)
    printers.add_line("gm2Rigid", "^gm2Rigid$", rigid_text)
    printers.add_line("gmRect", "^gmRect$", rect_text)
    printers.add_line("gmCircle", "^gmCircle$", circle_text)
    printers.add_line("gmEllipse", "^gmEllipse$", ellipse_text)
    printers.add_line("gmLine", "^gmLine$", line_text)
    printers.add_line("gmLineSeg", "^gmLineSeg$", segment_text)
    printers.add_line("gmPoint", "^gmPoint$", point_text)
    printers.add_line("gmEdgelet", "^gmEdgelet$", edgelet_text)
    printers.add_line("gmColor", "^gmColor$", color_text)
    printers.add_line("gm_InertiaData", "^gm_InertiaData$", inertia_text)
    printers.add_line(
        "gmException",
        "^(gmException(WithString)?|gmBadPointer|gm(MathError|Pel)::(Errors|Singular|OutOfRange|BadWindow)"
        "|gmArchive::(Errors|UnknownVersion|Truncated|Malformed|UnknownClass|OutOfRange)"
        "|gmContourDefs::(Errors|NumberedError<.*>|EmptyContour|EmptyRegionSet|BadParams|RegionCannotBeSetOpen))$",
        exception_text)
    printers.add_printer("gmPtrHandle", "^gmPtrHandle(Base)?(_const)?<.*>$", Handle)
    printers.add_printer("gmPolygon", "^gmPolygon$", Polygon)
    printers.add_printer("gmContour", "^gmContour$", Contour)
    printers.add_printer("gmRegion", "^gmRegion$", Region)
    printers.add_printer("gmRegionSet", "^gmRegionSet$", RegionSet)
    printers.add_printer("gmContourT", "^gmContourT<gmEdgelet>$", EdgeContour)
    printers.add_printer("gmRegionT", "^gmRegionT<gmEdgelet>$", EdgeRegion)
    printers.add_printer("gmRegionSetT", "^gmRegionSetT<gmEdgelet>$", EdgeRegionSet)
    return printers


# ----- Types


def is_complete(name):
    try:
        return bool(gdb.lookup_type(name).fields())
    except (gdb.error, RuntimeError):
        return False


def add_types(objfile):
    """Compilers describe classes with virtual functions where those are, which is the library: without debug information of its
    own, programs do not know their members. A file beside it does."""
    path = os.path.join(os.path.dirname(os.path.realpath(objfile.filename)), "mokcntr14", "types.o")
    if not os.path.exists(path) or any(other.filename == path for other in gdb.objfiles()):
        return
    names = ("gmContour", "gmRegion", "gmRegionSet", "gmContourT<gmEdgelet>", "gmRegionT<gmEdgelet>",
             "gmRegionSetT<gmEdgelet>", "gmRect", "gmCircle", "gmException", "gmContourDefs::BadParams")
    if all(is_complete(name) for name in names):
        return
    # Where no program is, so that no address is taken for something in this file.
    gdb.execute("add-symbol-file {} -o 0x4000000000000000".format(gdb_quoted(path)), to_string=True)


def gdb_quoted(path):
    return '"' + path.replace("\\", "\\\\").replace('"', '\\"') + '"'


def is_library(objfile):
    return objfile.filename is not None and os.path.basename(os.path.realpath(objfile.filename)).startswith(LIBRARY)


def on_new_objfile(event):
    if is_library(event.new_objfile):
        add_types(event.new_objfile)


PRINTERS = build()

if gdb.current_objfile() is not None:
    gdb.printing.register_pretty_printer(gdb.current_objfile(), PRINTERS, replace=True)
    add_types(gdb.current_objfile())
else:
    gdb.printing.register_pretty_printer(None, PRINTERS, replace=True)
    gdb.events.new_objfile.connect(on_new_objfile)
    for loaded in gdb.objfiles():
        if is_library(loaded):
            add_types(loaded)
