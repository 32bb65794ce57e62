#pragma once

#include "src/py/types.h"

#include <pybind11/pybind11.h>

#include <cstdio>

// How a list of values is shown to Python: append, at, size, remove, indexing, iteration. Everything here
// runs with the GIL held.

/// What Python gets by index: the element in the list, or a copy of it. By position and by iteration it gets
/// the element.
enum class ListElements { Referenced, Copied };

namespace list_detail {

namespace py = pybind11;

inline QString indexText(py::ssize_t index, qsizetype size)
{
    if (size == 0) {
        return QStringLiteral("Ungültiger Index %1. Die Liste ist leer.\n").arg(index);
    }
    return QStringLiteral("Ungültiger Index %1. Gültige Indices sind 0...%2 (-1...%3).\n")
        .arg(index)
        .arg(size - 1)
        .arg(-size);
}

/// Position in the list of an index as Python gives it; a negative one counts from the end.
template <typename List> qsizetype position(const List &list, py::ssize_t index)
{
    const qsizetype size = list.size();
    const qsizetype found = index < 0 ? index + size : index;
    if (found < 0 || found >= size) {
        throw py::index_error(indexText(index, size).toStdString());
    }
    return found;
}

/// Writes at once, past the log: the line is for who watches the backend's output.
template <typename... Values> void printLine(const char *format, Values... values)
{
    std::printf(format, values...);
    std::fflush(stdout);
}

template <typename List, typename Element> void remove(List &list, const Element &element)
{
    const qsizetype index = list.indexOf(element);
    if (index < 0) {
        throw py::value_error("Element nicht vorhanden");
    }
    const auto before = static_cast<int>(list.size());
    list.removeAt(index);
    printLine("Element entfernt (prev: %i, after: %lli, Adresse: %p)\n", before,
              static_cast<long long>(list.size()), static_cast<const void *>(&list));
}

template <typename List> long long printedLength(const List &list)
{
    const auto length = static_cast<long long>(list.size());
    printLine("aktuelle len: %lli, Adresse: %p\n", length, static_cast<const void *>(&list));
    return length;
}

/// Walks by position, so that a list may change meanwhile.
template <typename List> struct Iterator
{
    List *list;
    qsizetype next = 0;
};

template <typename List, typename ElementAt>
void bindIterator(py::class_<List> &cls, const ElementAt &elementAt)
{
    py::class_<Iterator<List>>(cls, "iterator", "Walks over the elements.")
        .def(
            "__iter__", [](Iterator<List> &self) -> Iterator<List> & { return self; },
            py::return_value_policy::reference)
        .def("__next__", [elementAt](Iterator<List> &iterator) {
            if (iterator.next >= iterator.list->size()) {
                throw py::stop_iteration();
            }
            return elementAt(*iterator.list, iterator.next++);
        });
    cls.def(
        "__iter__", [](List &list) { return Iterator<List>{&list}; }, py::keep_alive<0, 1>());
}

} // namespace list_detail

/// Gives a class of lists its members. `List` is a RecordList; before this is called, the class of its
/// records is bound with std::shared_ptr as holder.
template <typename Element, ListElements access, typename List> void bindList(pybind11::class_<List> &cls)
{
    namespace py = pybind11;
    // No look at the size: the screens and other threads see the list, too.
    const auto elementAt = [](const List &list, py::ssize_t index) {
        auto element = list.at(index);
        if (element == nullptr) {
            throw py::index_error(list_detail::indexText(index, list.size()).toStdString());
        }
        return element;
    };
    const auto get = [elementAt](const List &list, py::ssize_t index) {
        auto element = elementAt(list, list_detail::position(list, index));
        if constexpr (access == ListElements::Copied) {
            element = std::make_shared<Element>(*element);
        }
        return element;
    };
    const auto set = [](const List &list, py::ssize_t index, const Element &element) {
        *list.at(list_detail::position(list, index)) = element;
    };
    list_detail::bindIterator(cls, elementAt);
    cls.def(py::init<>());
    cls.def("append", &List::append, py::arg("element"), "Puts a copy at the end.");
    cls.def("at", elementAt, py::arg("index"), "The element at a position counted from 0.");
    cls.def("size", &List::size, "Number of elements.");
    cls.def("remove", &list_detail::remove<List, Element>, py::arg("element"),
            "Removes the first element equal to this one.");
    cls.def("__len__", &list_detail::printedLength<List>);
    cls.def("__bool__", [](const List &list) { return list.size() != 0; });
    cls.def("__getitem__", get, py::arg("index"));
    cls.def("__setitem__", set, py::arg("index"), py::arg("element"));
}
