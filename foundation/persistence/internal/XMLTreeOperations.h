#pragma once

// The operations of XMLTreeIO. A back end includes this in its source and instantiates the template there. From it
// they need the members of VXMLFileIOTinyXml and
//
//   bool Parse(std::string text)                  makes the tree of a text that is not checked yet
//   bool Print(VString& target)                   the tree as text in one line
//   bool Print(std::FILE* stream)                 the tree as indented text
//   void ClearTree()
//   Node Document()
//   static Node FirstChildOf/NextSiblingOf/ParentOf(Node)
//   static Node ElementFrom(Node, char const*)    the first of this node and its next siblings that is an element
//   static Node TextFrom(Node)                    the same for a text
//   static bool IsElement/IsDocument(Node)
//   static char const* NameOf(Node)               of an element
//   Node AddElement(Node parent, char const*), AddText(Node parent)   null without memory

#include "foundation/core/NarrowCast.h"
#include "foundation/persistence/XMLTreeIO.h"
#include "foundation/persistence/internal/FileReplacer.h"
#include "foundation/persistence/internal/XMLInput.h"
#include "foundation/persistence/internal/XMLTextCheck.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace VFoundation {

/// Runs `operation`; false when memory runs out, which makes a document that is saving incomplete.
template <class Back>
template <class Operation>
bool XMLTreeIO<Back>::Guarded(Operation operation) noexcept {
    try {
        return operation();
    } catch (std::exception const&) {
        return Refuse();
    }
}

/// Returns false and marks a document that is saving as incomplete.
template <class Back>
bool XMLTreeIO<Back>::Refuse() noexcept {
    Self().m_isIncomplete = Self().m_isIncomplete || Self().m_nMode == kSaving;
    return false;
}

// Opening and closing

/// Opens the text that `readText` returns; after a failure no document is open.
template <class Back>
template <class Reader>
bool XMLTreeIO<Back>::Load(char const* name, Reader readText) noexcept {
    Clear();
    Failure& failure = Self().m_failure;
    failure = {};
    bool const isLoaded = Guarded([&] {
        Self().m_path = name ? name : "";
        std::string text = readText(failure);
        Self().m_nMode = kLoading;
        Self().m_pCurrent = Self().Document();
        return !failure.reason && failure.systemError == 0 && Self().Parse(std::move(text));
    });
    if (!isLoaded) {
        if (!failure.reason && failure.systemError == 0) {
            failure.systemError = ENOMEM;
        }
        Clear();
    }
    return isLoaded;
}

/// Prepares a text for the parser; says where it is wrong when it does not pass.
template <class Back>
bool XMLTreeIO<Back>::Check(std::string& text, XMLTextFacts& facts) {
    if (PrepareXMLText(text, facts)) {
        Self().m_places = std::move(facts.places);
        return true;
    }
    std::string_view const before = std::string_view(text).substr(0, facts.errorOffset);
    Failure& failure = Self().m_failure;
    failure.reason = "not a well-formed document, or one beyond the limits";
    failure.line = 1 + static_cast<unsigned long>(std::count(before.begin(), before.end(), '\n'));
    failure.column = before.size() - (before.rfind('\n') + 1) + 1;
    return false;
}

template <class Back>
bool XMLTreeIO<Back>::OpenFileForRead(char const* path) {
    return Load(path, [path](Failure& failure) { return XMLFileText(path, failure); });
}

template <class Back>
bool XMLTreeIO<Back>::LoadFile(char const* name, unsigned char const* bytes, unsigned long length) {
    length = bytes && length <= kMaxTextSize ? length : 0;
    while (length > 0 && bytes[length - 1] == 0) {
        --length; // a terminator that was counted
    }
    return Load(name, [&](Failure&) { return std::string(reinterpret_cast<char const*>(bytes), length); });
}

template <class Back>
bool XMLTreeIO<Back>::OpenFileForWrite(char const* path) {
    StartSaving(path ? path : "", nullptr);
    return true;
}

template <class Back>
bool XMLTreeIO<Back>::WriteFileToString(VString& target) {
    StartSaving("", &target);
    return true;
}

template <class Back>
void XMLTreeIO<Back>::StartSaving(char const* path, VString* target) {
    Clear();
    Self().m_failure = {};
    Self().m_nMode = kSaving;
    Self().m_pCurrent = Self().Document();
    Self().m_pTargetString = target;
    Guarded([&] {
        Self().m_path = path;
        return true;
    });
}

template <class Back>
bool XMLTreeIO<Back>::CloseFile() {
    Failure& failure = Self().m_failure;
    failure = {};
    bool closed = IsValid();
    if (!closed) {
        failure.reason = "no document is open";
    } else if (Self().m_isIncomplete) {
        failure.reason = "the document refused something that was written";
        closed = false;
    } else if (Self().m_nMode == kSaving) {
        closed = Guarded([this] { return Save(); });
        if (!closed && !failure.reason && failure.systemError == 0) {
            failure.systemError = ENOMEM;
        }
    }
    Clear();
    return closed;
}

template <class Back>
bool XMLTreeIO<Back>::Save() {
    Failure& failure = Self().m_failure;
    if (Self().m_pTargetString) {
        return Self().Print(*Self().m_pTargetString);
    }
    FileReplacer file(Self().m_path.c_str());
    bool isWritten = false;
    if (file.Stream()) {
        errno = 0;
        isWritten = Self().Print(file.Stream());
        failure.systemError = isWritten ? 0 : errno;
        if (std::ftell(file.Stream()) > narrow_cast<long>(kMaxTextSize)) {
            failure.reason = "longer than a document may be";
            return false;
        }
        isWritten = isWritten && file.Commit();
    }
    if (!isWritten && failure.systemError == 0) {
        failure.systemError = file.Error();
    }
    return isWritten;
}

template <class Back>
void XMLTreeIO<Back>::Clear() {
    Back& self = Self();
    self.m_path.clear();
    self.ClearTree();
    std::vector<Place>().swap(self.m_places);
    self.m_pCurrent = {};
    self.m_pTargetString = nullptr;
    self.m_nMode = kNoDocument;
    self.m_nLevel = 0;
    self.m_bChildrenPending = false;
    self.m_isIncomplete = false;
}

// Moving

template <class Back>
template <class Node>
bool XMLTreeIO<Back>::MoveTo(Node node, int levels) noexcept {
    if (!node) {
        return false;
    }
    Self().m_pCurrent = node;
    Self().m_nLevel += levels;
    return true;
}

/// What the next sibling is while children are pending: the first child.
template <class Back>
bool XMLTreeIO<Back>::MoveToFirstOf(bool (XMLTreeIO::*openFirst)()) {
    Self().m_bChildrenPending = !(this->*openFirst)();
    return !Self().m_bChildrenPending;
}

template <class Back>
bool XMLTreeIO<Back>::OpenChildren() {
    Self().m_bChildrenPending = IsValid();
    return IsValid();
}

template <class Back>
bool XMLTreeIO<Back>::CloseChildren() {
    if (!Self().m_bChildrenPending) {
        return CloseChild();
    }
    Self().m_bChildrenPending = false;
    return true;
}

template <class Back>
bool XMLTreeIO<Back>::OpenFirstChild() {
    return IsValid() && MoveTo(Back::FirstChildOf(Self().m_pCurrent), 1);
}

template <class Back>
bool XMLTreeIO<Back>::OpenNextSibling() {
    if (Self().m_bChildrenPending) {
        return MoveToFirstOf(&XMLTreeIO::OpenFirstChild);
    }
    return IsValid() && MoveTo(Back::NextSiblingOf(Self().m_pCurrent), 0);
}

template <class Back>
bool XMLTreeIO<Back>::OpenFirstChildElement(char const* name) {
    if (!IsValid()) {
        return false;
    }
    if (Self().m_nMode == kSaving) {
        return AppendElement(Self().m_pCurrent, name, 1);
    }
    return MoveTo(Back::ElementFrom(Back::FirstChildOf(Self().m_pCurrent), name), 1);
}

template <class Back>
bool XMLTreeIO<Back>::OpenNextSiblingElement(char const* name) {
    if (!IsValid()) {
        return false;
    }
    if (Self().m_bChildrenPending) {
        Self().m_bChildrenPending = !OpenFirstChildElement(name);
        return !Self().m_bChildrenPending;
    }
    if (Self().m_nMode == kSaving) {
        return AppendElement(Back::ParentOf(Self().m_pCurrent), name, 0);
    }
    // A move counts as an opening.
    return MoveTo(Back::ElementFrom(Back::NextSiblingOf(Self().m_pCurrent), name), 1);
}

template <class Back>
bool XMLTreeIO<Back>::OpenFirstChildText() {
    if (!IsValid()) {
        return false;
    }
    return Self().m_nMode == kSaving ? AppendText(Self().m_pCurrent, 1)
                                     : MoveTo(Back::TextFrom(Back::FirstChildOf(Self().m_pCurrent)), 1);
}

template <class Back>
bool XMLTreeIO<Back>::OpenNextSiblingText() {
    if (Self().m_bChildrenPending) {
        return MoveToFirstOf(&XMLTreeIO::OpenFirstChildText);
    }
    if (!IsValid()) {
        return false;
    }
    return Self().m_nMode == kSaving ? AppendText(Back::ParentOf(Self().m_pCurrent), 0)
                                     : MoveTo(Back::TextFrom(Back::NextSiblingOf(Self().m_pCurrent)), 0);
}

template <class Back>
bool XMLTreeIO<Back>::CloseChild() {
    return IsValid() && MoveTo(Back::ParentOf(Self().m_pCurrent), -1);
}

/// Whether a child may be added to `parent`: one root to a document, and none to texts.
template <class Back>
template <class Node>
bool XMLTreeIO<Back>::MayAppend(Node parent) const noexcept {
    return parent && !Self().m_isIncomplete &&
           (Back::IsElement(parent) || (Back::IsDocument(parent) && !Back::FirstChildOf(parent)));
}

/// Appends an element and moves the cursor to it, `levels` deeper.
template <class Back>
template <class Node>
bool XMLTreeIO<Back>::AppendElement(Node parent, char const* name, int levels) {
    if (!name) {
        return false;
    }
    if (!MayAppend(parent) || !IsXMLName(name) || Self().m_nLevel + levels > kMaxNesting) {
        return Refuse();
    }
    return Guarded([&] { return MoveTo(Self().AddElement(parent, name), levels) || Refuse(); });
}

template <class Back>
template <class Node>
bool XMLTreeIO<Back>::AppendText(Node parent, int levels) {
    if (!MayAppend(parent) || !Back::IsElement(parent)) {
        return Refuse();
    }
    return Guarded([&] { return MoveTo(Self().AddText(parent), levels) || Refuse(); });
}

// State

template <class Back>
int XMLTreeIO<Back>::GetLevel() const {
    return Self().m_nLevel;
}

template <class Back>
int XMLTreeIO<Back>::GetMode() const {
    return Self().m_nMode;
}

template <class Back>
bool XMLTreeIO<Back>::IsValid() const {
    return static_cast<bool>(Self().m_pCurrent);
}

template <class Back>
void XMLTreeIO<Back>::PrintIndent() {
    for (int level = 1; level < Self().m_nLevel; ++level) {
        std::fputs("    ", stdout);
    }
}

template <class Back>
bool XMLTreeIO<Back>::IsComplete() const {
    return !Self().m_isIncomplete;
}

template <class Back>
IXMLFileIO::Failure XMLTreeIO<Back>::LastFailure() const {
    return Self().m_failure;
}

template <class Back>
std::string XMLTreeIO<Back>::Position() const {
    std::string position;
    for (auto node = Self().m_pCurrent; node && !Back::IsDocument(node); node = Back::ParentOf(node)) {
        if (!Back::IsElement(node)) {
            continue;
        }
        char const* const name = Back::NameOf(node);
        auto const first = Back::ElementFrom(Back::FirstChildOf(Back::ParentOf(node)), name);
        std::string step(name);
        unsigned long number = 1;
        for (auto other = first; other != node; ++number) {
            other = Back::ElementFrom(Back::NextSiblingOf(other), name);
        }
        if (number > 1) {
            step += "[" + std::to_string(number) + "]";
        }
        position.insert(0, position.empty() ? step : step + "/");
    }
    return position;
}

/// The elements are counted from the root on, in the order of their start tags.
template <class Back>
IXMLFileIO::Place XMLTreeIO<Back>::CursorPlace() const {
    auto cursor = Self().m_pCurrent;
    while (cursor && !Back::IsElement(cursor) && !Back::IsDocument(cursor)) {
        cursor = Back::ParentOf(cursor);
    }
    std::size_t before = 0;
    auto node =
        cursor && !Back::IsDocument(cursor) ? Back::FirstChildOf(Self().Document()) : decltype(cursor)();
    while (node && node != cursor) {
        before += Back::IsElement(node) ? 1 : 0;
        auto next = Back::FirstChildOf(node);
        while (!next && !Back::IsDocument(node)) {
            next = Back::NextSiblingOf(node);
            node = Back::ParentOf(node);
        }
        node = next;
    }
    return node && before < Self().m_places.size() ? Self().m_places[before] : Place();
}

} // namespace VFoundation
