// A 20 MB document of objects, loaded and saved: by the object layer, by TinyXML alone doing the same with the same
// tree, and by pugixml for orientation. TinyXML keeps rows and columns of every node unless it is told not to; it is
// measured both ways. Saving by the object layer includes the wait for the disk, which the others leave out: compare
// the CPU column, too.

#include "foundation/containers/VObjectArray.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"
#include "foundation/strings/VString.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>
#include <tinyxml.h>

#include <cstdlib>
#include <filesystem>
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
        VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOTinyXmlFactory);
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
    state.SetBytesProcessed(
        static_cast<std::int64_t>(state.iterations() * std::filesystem::file_size(Path())));
    std::filesystem::remove(Path());
}

void LoadObjects(benchmark::State& state) {
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

void SaveObjects(benchmark::State& state) {
    Readings();
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
            char text[64];
            auto* const element = new TiXmlElement("AReading");
            array->LinkEndChild(element);
            std::snprintf(text, sizeof text, "%li", reading.id);
            element->SetAttribute("id", text);
            std::snprintf(text, sizeof text, "%.16g", reading.value);
            element->SetAttribute("value", text);
            std::snprintf(text, sizeof text, "%g", static_cast<double>(reading.weight));
            element->SetAttribute("weight", text);
            element->SetAttribute("valid", reading.valid ? "true" : "false");
            auto* const comment = new TiXmlElement("VString");
            element->LinkEndChild(comment);
            comment->SetAttribute("name", "comment");
            comment->LinkEndChild(new TiXmlText(reading.comment.CString()));
        }
        if (!document.SaveFile(Path().c_str())) {
            std::abort();
        }
    }
    CountBytes(state);
}

void SavePugixml(benchmark::State& state) {
    for (auto _ : state) {
        pugi::xml_document document;
        pugi::xml_node array = document.append_child("Document").append_child("VObjectArray");
        array.append_attribute("name") = "readings";
        array.append_attribute("count") = kReadings;
        for (long i = 0; i < kReadings; ++i) {
            auto const& reading = *static_cast<AReading*>(Readings()->ObjectAtIndex(i));
            pugi::xml_node node = array.append_child("AReading");
            node.append_attribute("id") = reading.id;
            node.append_attribute("value") = reading.value;
            node.append_attribute("weight") = reading.weight;
            node.append_attribute("valid") = reading.valid;
            pugi::xml_node comment = node.append_child("VString");
            comment.append_attribute("name") = "comment";
            comment.text() = reading.comment.CString();
        }
        if (!document.save_file(Path().c_str())) {
            std::abort();
        }
    }
    CountBytes(state);
}

BENCHMARK(LoadObjects)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadTinyXml)->ArgName("tabsize")->Arg(4)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadPugixml)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveObjects)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveTinyXml)->Unit(benchmark::kMillisecond);
BENCHMARK(SavePugixml)->Unit(benchmark::kMillisecond);

} // namespace
