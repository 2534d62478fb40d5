#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/project_xml_archive.h"
#include "tests/support/scratch_folder.h"

namespace orvane
{

using DocumentAction = std::function<void(CProjectXMLArchive &)>;

// What the action writes into an element, without the frame of the document.
inline std::string written(DocumentAction const & action)
{
    CString text;
    CProjectXMLArchive archive;
    EXPECT_EQ(archive.openForWrite(&text, "", 0, "r", "", ""), 1);
    int const frame = text.GetLength();
    action(archive);
    return std::string(text.Mid(frame).view());
}

// The document of one object, one level in.
template <class Object>
    requires requires(Object & object, CProjectXMLArchive & archive)
    {
        object.xmlSerialize(archive);
    }
std::string written(Object & object)
{
    return written([&](CProjectXMLArchive & archive) { object.xmlSerialize(archive); });
}

// Does the same for every element, and remembers what came.
struct CReader : IProjectXMLTagProcessor
{
    explicit CReader(DocumentAction action = [](auto &) {}) : action(std::move(action)) {}
    void xmlSerialize(CProjectXMLArchive & archive) override
    {
        tags += std::string(archive.tagName().view()) + ' ';
        action(archive);
    }
    DocumentAction action;
    std::string tags;
};

inline int parse(std::string const & document, IProjectXMLTagProcessor & processor)
{
    CScratchFolder const folder;
    return CProjectXMLArchive().parse(folder.write("document.xml", document), &processor);
}

// The action reads from an element with what was written before.
inline void readBack(std::string const & attributes, DocumentAction const & action)
{
    CReader reader(action);
    EXPECT_EQ(parse("<r " + attributes + "/>", reader), 1) << attributes;
}

}  // namespace orvane
