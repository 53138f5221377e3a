#include "foundation/persistence/internal/XMLPrinter.h"

#include "foundation/persistence/IXMLFileIO.h"
#include "foundation/persistence/internal/XMLTextCheck.h"

#include <array>
#include <cstring>

namespace VFoundation {

namespace {

constexpr std::size_t kBlockSize = std::size_t{64} * 1024;
constexpr std::size_t kIndent = 4;

constexpr auto kNeedsReference = [] {
    std::array<bool, 256> table{};
    for (std::size_t c = 0; c < ' '; ++c) {
        table[c] = true;
    }
    for (char const c : {'&', '<', '>', '"', '\''}) {
        table[static_cast<unsigned char>(c)] = true;
    }
    return table;
}();

void AppendReference(std::string& text, char c) {
    switch (c) {
    case '&':
        text += "&amp;";
        return;
    case '<':
        text += "&lt;";
        return;
    case '>':
        text += "&gt;";
        return;
    case '"':
        text += "&quot;";
        return;
    case '\'':
        text += "&apos;";
        return;
    default:
        constexpr char kDigits[] = "0123456789ABCDEF";
        char const reference[] = {'&', '#', 'x', kDigits[c >> 4], kDigits[c & 15], ';'};
        text.append(reference, sizeof reference);
    }
}

bool IsText(pugi::xml_node node) {
    return node.type() == pugi::node_pcdata;
}

} // namespace

bool XMLPrinter::Print(pugi::xml_node document) {
    for (pugi::xml_node const node : document.children()) {
        PrintElement(node, 0);
        if (m_stream) {
            m_text += '\n';
        }
    }
    return Flush();
}

bool XMLPrinter::Flush() {
    m_failed = m_failed || m_flushed + m_text.size() > IXMLFileIO::kMaxTextSize;
    if (m_stream && !m_failed) {
        m_failed = std::fwrite(m_text.data(), 1, m_text.size(), m_stream) != m_text.size();
        m_flushed += m_text.size();
        m_text.clear();
    }
    return !m_failed;
}

void XMLPrinter::StartLine(std::size_t depth) {
    if (m_stream) {
        m_text += '\n';
        m_text.append(kIndent * depth, ' ');
    }
}

/// Recurses as deep as elements may nest.
void XMLPrinter::PrintElement(pugi::xml_node element, std::size_t depth) {
    if (m_text.size() >= kBlockSize && !Flush()) {
        return;
    }
    m_text += '<';
    m_text += element.name();
    PrintAttributes(element);
    pugi::xml_node const first = element.first_child();
    if (!first) {
        m_text += " />";
        return;
    }
    m_text += '>';
    for (pugi::xml_node node = first; node && !m_failed; node = node.next_sibling()) {
        if (IsText(node)) {
            PrintText(node, depth + 1);
        } else {
            StartLine(depth + 1);
            PrintElement(node, depth + 1);
        }
    }
    if (!IsText(first) || first.next_sibling()) {
        StartLine(depth);
    }
    m_text += "</";
    m_text += element.name();
    m_text += '>';
}

void XMLPrinter::PrintAttributes(pugi::xml_node element) {
    for (auto attribute = element.first_attribute(); attribute; attribute = attribute.next_attribute()) {
        char const* const value = attribute.value();
        char const quote = std::strchr(value, '"') ? '\'' : '"';
        m_text += ' ';
        m_text += attribute.name();
        m_text += '=';
        m_text += quote;
        PrintEncoded(value);
        m_text += quote;
    }
}

void XMLPrinter::PrintText(pugi::xml_node text, std::size_t depth) {
    std::string_view const value = text.value();
    if (!NeedsXMLCData(value, !text.next_sibling() && !text.previous_sibling())) {
        PrintEncoded(value);
        return;
    }
    StartLine(depth);
    m_text += "<![CDATA[";
    m_text += value;
    m_text += "]]>";
    if (m_stream) {
        m_text += '\n';
    }
}

void XMLPrinter::PrintEncoded(std::string_view text) {
    while (!text.empty()) {
        std::size_t plain = 0;
        while (plain < text.size() && !kNeedsReference[static_cast<unsigned char>(text[plain])]) {
            ++plain;
        }
        m_text += text.substr(0, plain);
        if (plain < text.size()) {
            AppendReference(m_text, text[plain++]);
        }
        text.remove_prefix(plain);
    }
}

} // namespace VFoundation
