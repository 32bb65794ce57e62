#include "python_values.h"

#include <pybind11/eval.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace py = pybind11;

namespace {

using Kind = PlannedValue::Kind;

constexpr int deepestPlan = 4;
constexpr int mostElements = 6;
constexpr qint64 absurdLength = 1LL << 60;
/// Beyond what Python lets calls nest.
constexpr qint64 tooDeep = 3000;

constexpr const char *classes = R"(
class Counted:
    living = 0
    def __init__(self):
        Counted.living += 1
    def __del__(self):
        Counted.living -= 1

class Sized(Counted):
    def __init__(self, elements, length):
        super().__init__()
        self.elements, self.length = elements, length
    def __iter__(self):
        return iter(self.elements)
    def __len__(self):
        return self.length

class SizedBadly(Sized):
    def __len__(self):
        raise ZeroDivisionError

class BreaksOff(Sized):
    def __iter__(self):
        yield from self.elements
        raise ZeroDivisionError

class StrangeAndMute(Counted):
    def __repr__(self):
        raise ZeroDivisionError
    __str__ = __repr__

class Text(str):
    def __str__(self):
        return "another"

def generator(elements):
    return (element for element in elements)
)";

bool isContainer(Kind kind)
{
    return kind == Kind::List || kind == Kind::Tuple || kind == Kind::Set || kind == Kind::Dict ||
           kind == Kind::Sized || kind == Kind::SizedBadly || kind == Kind::BreaksOff ||
           kind == Kind::Generator;
}

qint64 consumeWholeNumber(FuzzedDataProvider &data)
{
    return data.ConsumeBool()
               ? data.ConsumeIntegralInRange<qint64>(-9, 300)
               : data.PickValueInArray<qint64>(
                     {std::numeric_limits<int>::max(), std::numeric_limits<int>::min(),
                      std::numeric_limits<int>::max() + 1LL, std::numeric_limits<int>::min() - 1LL,
                      std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min()});
}

/// What Python takes for the key of a dict.
PlannedValue consumeKey(FuzzedDataProvider &data)
{
    PlannedValue key;
    key.kind = data.PickValueInArray(
        {Kind::Text, Kind::Text, Kind::Text, Kind::Text, Kind::Int, Kind::None, Kind::StrangeAndMute});
    key.text = key.kind == Kind::Text ? consumeText(data, 16) : QString();
    key.number = key.kind == Kind::Int ? data.ConsumeIntegralInRange(-3, 12) : 0;
    return key;
}

/// Python keeps one item of equal keys: at the place of the first, with the value of the last.
void addItem(PlannedValue &dict, const PlannedValue &key, const PlannedValue &value)
{
    for (std::size_t index = 0; index < dict.keys.size(); ++index) {
        const PlannedValue &other = dict.keys[index];
        if (key.kind != Kind::StrangeAndMute && other.kind == key.kind && other.text == key.text &&
            other.number == key.number) {
            dict.elements[index] = value;
            return;
        }
    }
    dict.keys.push_back(key);
    dict.elements.push_back(value);
}

void consumeElements(FuzzedDataProvider &data, PlannedValue &planned, int depth)
{
    const int most = planned.kind == Kind::Set ? 1 : mostElements;
    const int count = depth < deepestPlan ? data.ConsumeIntegralInRange(0, most) : 0;
    for (int index = 0; index < count; ++index) {
        if (planned.kind == Kind::Dict) {
            const PlannedValue key = consumeKey(data);
            addItem(planned, key, consumeValue(data, depth + 1));
        } else {
            planned.elements.push_back(planned.kind == Kind::Set ? consumeKey(data)
                                                                 : consumeValue(data, depth + 1));
        }
    }
    if (planned.kind == Kind::Sized) {
        const auto length = static_cast<qint64>(planned.elements.size());
        planned.number =
            data.PickValueInArray<qint64>({length, length, length + 1, length + 3, 0, absurdLength});
    }
}

/// Whether Python's repr of it raises. Lists in each other have one; it raises in the conversion's place.
bool isMute(const PlannedValue &planned)
{
    switch (planned.kind) {
    case Kind::StrangeAndMute:
        return true;
    case Kind::Nested:
        return planned.number >= tooDeep;
    case Kind::List:
    case Kind::Tuple:
    case Kind::Set:
    case Kind::Dict:
        return std::any_of(planned.elements.begin(), planned.elements.end(), isMute) ||
               std::any_of(planned.keys.begin(), planned.keys.end(), isMute);
    default:
        return false;
    }
}

/// Python has such objects once, and refers to them wherever it likes.
bool isShared(const py::handle &object)
{
    return PyUnicode_Check(object.ptr()) || PyBytes_Check(object.ptr()) ||
           (PyTuple_Check(object.ptr()) && PyTuple_GET_SIZE(object.ptr()) == 0);
}

} // namespace

PlannedValue consumeValue(FuzzedDataProvider &data, int depth)
{
    PlannedValue planned;
    planned.kind = static_cast<Kind>(data.ConsumeIntegralInRange(0, static_cast<int>(Kind::Last)));
    switch (planned.kind) {
    case Kind::Bool:
        planned.number = data.ConsumeBool() ? 1 : 0;
        break;
    case Kind::Int:
        planned.number = consumeWholeNumber(data);
        break;
    case Kind::Float:
        planned.real = consumeNumber(data);
        break;
    case Kind::Text:
    case Kind::SubclassedText:
        planned.text = consumeText(data);
        break;
    case Kind::Bytes:
    case Kind::ByteArray:
        planned.bytes = QByteArray::fromStdString(data.ConsumeRandomLengthString(12));
        break;
    case Kind::Nested:
        planned.number =
            data.ConsumeIntegralInRange(0, 7) == 0 ? tooDeep : data.ConsumeIntegralInRange(1, 60);
        break;
    default:
        if (isContainer(planned.kind)) {
            consumeElements(data, planned, depth);
        }
    }
    return planned;
}

PythonValues::PythonValues()
{
    py::exec(classes, m_classes);
}

py::object pythonText(const QString &text)
{
    int order = -1; // little-endian
    return py::reinterpret_steal<py::object>(PyUnicode_DecodeUTF16(
        reinterpret_cast<const char *>(text.utf16()), 2 * text.size(), "surrogatepass", &order));
}

py::list PythonValues::listOf(const std::vector<PlannedValue> &elements)
{
    py::list list;
    for (const PlannedValue &element : elements) {
        list.append(make(element));
    }
    return list;
}

py::object PythonValues::make(const PlannedValue &planned)
{
    switch (planned.kind) {
    case Kind::None:
        return py::none();
    case Kind::Bool:
        return py::bool_(planned.number != 0);
    case Kind::Int:
        return py::int_(planned.number);
    case Kind::Float:
        return py::float_(planned.real);
    default:
        break;
    }
    m_made.push_back(makeOther(planned));
    return m_made.back();
}

py::object PythonValues::makeOther(const PlannedValue &planned)
{
    const auto made = [&](const char *name, auto &&...arguments) -> py::object {
        return m_classes[name](std::forward<decltype(arguments)>(arguments)...);
    };
    switch (planned.kind) {
    case Kind::HugeInt:
        return py::int_(1).attr("__lshift__")(100);
    case Kind::Text:
        return pythonText(planned.text);
    case Kind::SubclassedText:
        return made("Text", pythonText(planned.text));
    case Kind::Bytes:
        return py::bytes(planned.bytes.toStdString());
    case Kind::ByteArray:
        return py::bytearray(planned.bytes.constData(), static_cast<std::size_t>(planned.bytes.size()));
    case Kind::List:
        return listOf(planned.elements);
    case Kind::Tuple:
        return py::tuple(listOf(planned.elements));
    case Kind::Set:
        return py::set(listOf(planned.elements));
    case Kind::Sized:
        return made("Sized", listOf(planned.elements), planned.number);
    case Kind::SizedBadly:
        return made("SizedBadly", listOf(planned.elements), 0);
    case Kind::BreaksOff:
        return made("BreaksOff", listOf(planned.elements), planned.elements.size());
    case Kind::Generator:
        return made("generator", listOf(planned.elements));
    case Kind::Strange:
        return made("Counted");
    case Kind::StrangeAndMute:
        return made("StrangeAndMute");
    case Kind::HoldsItself: {
        py::list list;
        list.append(list);
        list.append(list);
        return list;
    }
    case Kind::Nested: {
        py::list list;
        for (qint64 level = 1; level < planned.number; ++level) {
            py::list outer;
            outer.append(list);
            list = outer;
        }
        return list;
    }
    default: {
        py::dict dict;
        for (std::size_t index = 0; index < planned.keys.size(); ++index) {
            dict[make(planned.keys[index])] = make(planned.elements[index]);
        }
        return dict;
    }
    }
}

std::vector<Py_ssize_t> PythonValues::references() const
{
    std::vector<Py_ssize_t> counts;
    counts.reserve(m_made.size());
    for (const py::object &object : m_made) {
        if (!isShared(object)) {
            counts.push_back(Py_REFCNT(object.ptr()));
        }
    }
    return counts;
}

void PythonValues::forget()
{
    for (const py::object &object : m_made) {
        if (PyList_Check(object.ptr()) && PyList_GET_SIZE(object.ptr()) > 0 &&
            PyList_GET_ITEM(object.ptr(), 0) == object.ptr()) {
            object.attr("clear")();
        }
    }
    m_made.clear();
}

int PythonValues::living() const
{
    return m_classes["Counted"].attr("living").cast<int>();
}

namespace expected {

namespace {

/// What stands in for a text that has no UTF-8.
QString text(const QString &planned)
{
    return planned.isValidUtf16() ? planned : QStringLiteral("<KONVERTIERUNGSFEHLER_PY->QT>");
}

/// All that can be told of an object without a counterpart is its repr, and that of what holds it.
QVariant strange(const PlannedValue &planned, const PlannedValue &parent)
{
    if (isMute(planned) || (&planned != &parent && isMute(parent))) {
        return {}; // reported, with no more to say
    }
    throw Refused();
}

QVariantList list(const PlannedValue &planned)
{
    QVariantList result;
    for (const PlannedValue &element : planned.elements) {
        result.append(variant(element, planned));
    }
    return result;
}

QVariant dict(const PlannedValue &planned)
{
    QVariantMap result;
    for (std::size_t index = 0; index < planned.keys.size(); ++index) {
        const PlannedValue &key = planned.keys[index];
        if (key.kind == Kind::StrangeAndMute) {
            return {};
        }
        const QString name = key.kind == Kind::Text  ? text(key.text)
                             : key.kind == Kind::Int ? QString::number(key.number)
                                                     : QStringLiteral("None");
        result.insert(name, variant(planned.elements[index], planned));
    }
    return result;
}

QVariant nested(const PlannedValue &planned)
{
    if (planned.number >= tooDeep) {
        throw Refused();
    }
    QVariantList result;
    for (qint64 level = 1; level < planned.number; ++level) {
        result = QVariantList{QVariant(result)};
    }
    return result;
}

} // namespace

QVariant variant(const PlannedValue &planned, const PlannedValue &parent)
{
    switch (planned.kind) {
    case Kind::None:
        return QVariant::fromValue(nullptr);
    case Kind::Bool:
        return planned.number != 0;
    case Kind::Int:
        return std::in_range<int>(planned.number) ? QVariant(static_cast<int>(planned.number)) : QVariant();
    case Kind::Float:
        return planned.real;
    case Kind::Text:
    case Kind::SubclassedText:
        return text(planned.text);
    case Kind::Bytes:
    case Kind::ByteArray:
        return planned.bytes;
    case Kind::List:
    case Kind::Tuple:
    case Kind::Set:
    case Kind::Sized:
        return list(planned);
    case Kind::BreaksOff:
        list(planned);
        return {};
    case Kind::HugeInt:
    case Kind::SizedBadly:
    case Kind::Generator:
        return {};
    case Kind::Dict:
        return dict(planned);
    case Kind::HoldsItself:
        throw Refused();
    case Kind::Nested:
        return nested(planned);
    case Kind::Strange:
    case Kind::StrangeAndMute:
        return strange(planned, parent);
    }
    return {};
}

} // namespace expected
