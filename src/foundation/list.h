// tm: owning lists.  The records of a list are linked by their own fields previous and next; the list owns
// them, and whoever takes one out of it holds it from then on.  A list is known by its first and its last
// record, or by its last alone, or, as the members of a bus, by its first alone.
#pragma once

#include <memory>
#include <utility>

// Puts a record at the end.
template <typename T>
T& tm_list_append(std::unique_ptr<T> record, T*& first, T*& last) {
    record->previous = last;
    record->next = nullptr;
    T* const added = record.release();
    (last == nullptr ? first : last->next) = added;
    last = added;
    return *added;
}
template <typename T>
T& tm_list_append(std::unique_ptr<T> record, T*& last) {
    T* first = last;
    return tm_list_append(std::move(record), first, last);
}

// Takes a record out.
template <typename T>
std::unique_ptr<T> tm_list_take(T* record, T*& last) {
    (record->next != nullptr ? record->next->previous : last) = record->previous;
    if (record->previous != nullptr) record->previous->next = record->next;
    return std::unique_ptr<T>(record);
}
template <typename T>
std::unique_ptr<T> tm_list_take(T* record, T*& first, T*& last) {
    if (first == record) first = record->next;
    return tm_list_take(record, last);
}
// The record that a link to the first, or the next field of a record, leads to.
template <typename T>
std::unique_ptr<T> tm_list_take_next(T*& link) {
    std::unique_ptr<T> taken(link);
    link = taken->next;
    if (link != nullptr) link->previous = taken->previous;
    return taken;
}

// Frees every record.
template <typename T>
void tm_list_clear(T*& first, T*& last) {
    while (first != nullptr) tm_list_take_next(first);
    last = nullptr;
}
template <typename T>
void tm_list_clear(T*& last) {
    while (last != nullptr) tm_list_take(last, last);
}
