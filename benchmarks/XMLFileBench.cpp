// A 22 MB document of objects, loaded and saved: by the object layer on each of its back ends, and by TinyXML, pugixml
// and tinyxml2 alone, which make and read a tree of the same elements. Each saves the same bytes, which is checked, and
// waits until they are on the disk: compare the CPU column, too. TinyXML keeps rows and columns of every node unless it
// is told not to; it is measured both ways.

#include "foundation/containers/VObjectArray.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOPugiXmlFactory.h"
#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"
#include "foundation/strings/VString.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>
#include <tinyxml.h>
#include <tinyxml2.h>

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using namespace VFoundation;

constexpr long kReadings = 120000;

/// A class as users write them.
class AReading : public Registered<AReading, VObject> {
  public:
    static constexpr char const* kClassName = "AReading";
    static inline VClass* ms_theClass = nullptr;

    explicit AReading(VClass* cls = nullptr) : Registered(cls) {}
    static AReading* New() { return new AReading; }

    bool SerializeAsXML(VXMLFile& file) override {
        VObject::SerializeAsXML(file);
        file.SerializeAttribute("id", id);
        file.SerializeAttribute("value", value);
        file.SerializeAttribute("weight", weight);
        file.SerializeAttribute("valid", valid);
        return file.SerializeObject("comment", comment);
    }

    long id = 0;
    double value = 0;
    float weight = 0;
    bool valid = false;
    VString comment;
};

struct Plain {
    long id;
    double value;
    float weight;
    bool valid;
    std::string comment;
};

std::string const& Path() {
    static std::string const path =
        (std::filesystem::temp_directory_path() / ("xml-bench-" + std::to_string(::getpid()))).string();
    return path;
}

VObjectRef<VObjectArray> const& Readings() {
    static auto const readings = [] {
        InitializeLibrary(false);
        AReading::TheClass();
        auto array = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
        for (long i = 0; i < kReadings; ++i) {
            auto const reading = VObjectRef<AReading>::Adopt(AReading::New());
            reading->id = i;
            reading->value = static_cast<double>(i) * 1.1;
            reading->weight = static_cast<float>(i) / 3.0F;
            reading->valid = i % 2 == 0;
            reading->comment = "taken at the usual place & hour <noon>";
            array->AddObject(reading.Get());
        }
        return array;
    }();
    return readings;
}

void UseBackEnd(bool isPugiXml) {
    if (isPugiXml) {
        VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOPugiXmlFactory);
    } else {
        VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOTinyXmlFactory);
    }
}

void Save() {
    auto const& readings = Readings(); // which brings up the library
    VXMLFile file;
    file.OpenFileForWrite(Path().c_str(), "Document");
    file.WriteObject("readings", readings.Get());
    if (!file.CloseFile()) {
        std::abort();
    }
}

void CountBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(Path())));
    std::filesystem::remove(Path());
}

std::string SavedBytes() {
    std::ifstream file(Path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// What a peer does after saving: waits for the disk.
void Sync() {
    int const file = ::open(Path().c_str(), O_RDONLY | O_CLOEXEC);
    if (::fsync(file) != 0 || ::close(file) != 0) {
        std::abort();
    }
}

/// Ends a benchmark of a peer that saves, whose file must be ours.
void CheckSaved(benchmark::State& state) {
    std::string const bytes = SavedBytes();
    Save();
    if (SavedBytes() != bytes) {
        state.SkipWithError("saved something else");
    }
    CountBytes(state);
}

void LoadObjects(benchmark::State& state) {
    Readings();
    UseBackEnd(state.range(0) != 0);
    Save();
    for (auto _ : state) {
        auto const array = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
        VXMLFile file;
        if (!file.OpenFileForRead(Path().c_str(), "Document") || !file.ReadObject("readings", array.Get()) ||
            array->Count() != kReadings) {
            std::abort();
        }
    }
    CountBytes(state);
}

void LoadTinyXml(benchmark::State& state) {
    Save();
    for (auto _ : state) {
        std::vector<Plain> readings;
        TiXmlDocument document;
        document.SetTabSize(static_cast<int>(state.range(0)));
        if (!document.LoadFile(Path().c_str())) {
            std::abort();
        }
        TiXmlElement const* element = document.RootElement()->FirstChildElement()->FirstChildElement();
        for (; element; element = element->NextSiblingElement()) {
            readings.push_back({std::atol(element->Attribute("id")), std::atof(element->Attribute("value")),
                                static_cast<float>(std::atof(element->Attribute("weight"))),
                                std::string_view(element->Attribute("valid")) == "true",
                                element->FirstChildElement()->GetText()});
        }
        if (readings.size() != kReadings) {
            std::abort();
        }
    }
    CountBytes(state);
}

void LoadPugixml(benchmark::State& state) {
    Save();
    for (auto _ : state) {
        std::vector<Plain> readings;
        pugi::xml_document document;
        if (!document.load_file(Path().c_str())) {
            std::abort();
        }
        for (pugi::xml_node const node : document.document_element().first_child().children()) {
            readings.push_back({node.attribute("id").as_int(), node.attribute("value").as_double(),
                                node.attribute("weight").as_float(), node.attribute("valid").as_bool(),
                                node.first_child().child_value()});
        }
        if (readings.size() != kReadings) {
            std::abort();
        }
    }
    CountBytes(state);
}

void LoadTinyXml2(benchmark::State& state) {
    Save();
    for (auto _ : state) {
        std::vector<Plain> readings;
        tinyxml2::XMLDocument document;
        if (document.LoadFile(Path().c_str()) != tinyxml2::XML_SUCCESS) {
            std::abort();
        }
        for (auto const* element = document.RootElement()->FirstChildElement()->FirstChildElement(); element;
             element = element->NextSiblingElement()) {
            readings.push_back({element->IntAttribute("id"), element->DoubleAttribute("value"),
                                element->FloatAttribute("weight"), element->BoolAttribute("valid"),
                                element->FirstChildElement()->GetText()});
        }
        if (readings.size() != kReadings) {
            std::abort();
        }
    }
    CountBytes(state);
}

/// The texts of a reading's numbers.
struct Texts {
    explicit Texts(AReading const& reading) {
        std::snprintf(id, sizeof id, "%li", reading.id);
        std::snprintf(value, sizeof value, "%.16g", reading.value);
        std::snprintf(weight, sizeof weight, "%g", static_cast<double>(reading.weight));
    }
    char id[32];
    char value[32];
    char weight[32];
};

void SaveObjects(benchmark::State& state) {
    Readings();
    UseBackEnd(state.range(0) != 0);
    for (auto _ : state) {
        Save();
    }
    CountBytes(state);
}

void SaveTinyXml(benchmark::State& state) {
    for (auto _ : state) {
        TiXmlDocument document;
        auto* const root = new TiXmlElement("Document");
        document.LinkEndChild(root);
        auto* const array = new TiXmlElement("VObjectArray");
        root->LinkEndChild(array);
        array->SetAttribute("name", "readings");
        array->SetAttribute("count", std::to_string(kReadings).c_str());
        for (long i = 0; i < kReadings; ++i) {
            auto const& reading = *static_cast<AReading*>(Readings()->ObjectAtIndex(i));
            Texts const texts(reading);
            auto* const element = new TiXmlElement("AReading");
            array->LinkEndChild(element);
            element->SetAttribute("id", texts.id);
            element->SetAttribute("value", texts.value);
            element->SetAttribute("weight", texts.weight);
            element->SetAttribute("valid", reading.valid ? "true" : "false");
            auto* const comment = new TiXmlElement("VString");
            element->LinkEndChild(comment);
            comment->SetAttribute("name", "comment");
            comment->LinkEndChild(new TiXmlText(reading.comment.CString()));
        }
        if (!document.SaveFile(Path().c_str())) {
            std::abort();
        }
        Sync();
    }
    CheckSaved(state);
}

void SavePugixml(benchmark::State& state) {
    for (auto _ : state) {
        pugi::xml_document document;
        pugi::xml_node array = document.append_child("Document").append_child("VObjectArray");
        array.append_attribute("name") = "readings";
        array.append_attribute("count") = kReadings;
        for (long i = 0; i < kReadings; ++i) {
            auto const& reading = *static_cast<AReading*>(Readings()->ObjectAtIndex(i));
            Texts const texts(reading);
            pugi::xml_node node = array.append_child("AReading");
            node.append_attribute("id") = texts.id;
            node.append_attribute("value") = texts.value;
            node.append_attribute("weight") = texts.weight;
            node.append_attribute("valid") = reading.valid;
            pugi::xml_node comment = node.append_child("VString");
            comment.append_attribute("name") = "comment";
            comment.text() = reading.comment.CString();
        }
        if (!document.save_file(Path().c_str(), "    ", pugi::format_indent | pugi::format_no_declaration)) {
            std::abort();
        }
        Sync();
    }
    CheckSaved(state);
}

void SaveTinyXml2(benchmark::State& state) {
    for (auto _ : state) {
        tinyxml2::XMLDocument document;
        auto* const root = document.NewElement("Document");
        document.InsertEndChild(root);
        auto* const array = root->InsertNewChildElement("VObjectArray");
        array->SetAttribute("name", "readings");
        array->SetAttribute("count", std::to_string(kReadings).c_str());
        for (long i = 0; i < kReadings; ++i) {
            auto const& reading = *static_cast<AReading*>(Readings()->ObjectAtIndex(i));
            Texts const texts(reading);
            auto* const element = array->InsertNewChildElement("AReading");
            element->SetAttribute("id", texts.id);
            element->SetAttribute("value", texts.value);
            element->SetAttribute("weight", texts.weight);
            element->SetAttribute("valid", reading.valid);
            auto* const comment = element->InsertNewChildElement("VString");
            comment->SetAttribute("name", "comment");
            comment->SetText(reading.comment.CString());
        }
        if (document.SaveFile(Path().c_str()) != tinyxml2::XML_SUCCESS) {
            std::abort();
        }
        Sync();
    }
    CheckSaved(state);
}

BENCHMARK(LoadObjects)->ArgName("pugixml")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadTinyXml)->ArgName("tabsize")->Arg(4)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadPugixml)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadTinyXml2)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveObjects)->ArgName("pugixml")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveTinyXml)->Unit(benchmark::kMillisecond);
BENCHMARK(SavePugixml)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveTinyXml2)->Unit(benchmark::kMillisecond);

} // namespace
