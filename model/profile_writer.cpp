#include <tinyxml.h>

#include <cassert>
#include <memory>

#include "model/profile_document.h"
#include "model/profile_elements.h"

namespace kvn::model {
namespace {

class ProfileWriter {
public:
    explicit ProfileWriter(const TextCodec& textCodec) : codec(textCodec) {}

    void Write(const ProfileSet& profiles, TiXmlDocument& document) {
        document.LinkEndChild(std::make_unique<TiXmlDeclaration>("1.0", "utf-8", "yes").release());
        ++constructs;
        TiXmlElement& root = AddElement(document, element::kRoot);
        const ProfileRecord& first = profiles.front();
        AddNumber(root, element::kVid, first.vid);
        AddNumber(root, element::kPid, first.pid);
        AddNumber(root, element::kSelectProfile, first.selectedIndex);
        for (const ProfileRecord& record : profiles) WriteProfile(record, AddElement(root, element::kProfile));
    }

    std::size_t Constructs() const { return constructs; }

private:
    void WriteProfile(const ProfileRecord& record, TiXmlElement& profile) {
        const ProfileSettings& settings = record.settings;
        AddText(profile, element::kProfileName, record.name);
        for (const SettingFieldRow& row : kSettingFields) {
            AddNumber(profile, row.fileElement, settings[row.field]);
            WriteEtcKeyOf(row.field, settings, profile);
        }
        for (const ApplicationEntry& entry : settings.applications) {
            TiXmlElement& application = AddElement(profile, element::kApplication);
            AddText(application, element::kApplicationName, entry.name);
            AddText(application, element::kApplicationPath, entry.path);
        }
        for (const GestureEntry& entry : settings.gestures) {
            TiXmlElement& gesture = AddElement(profile, element::kGesture);
            AddText(gesture, element::kGestureStroke, entry.stroke);
            AddNumber(gesture, element::kGestureFunction, entry.function);
            AddText(gesture, element::kGestureMemo, entry.memo);
            AddText(gesture, element::kGestureEtcKey, EtcKeyToText(entry.etcKey));
        }
    }

    // A slot's arbitrary key follows its function; a scroll value has none.
    void WriteEtcKeyOf(SettingField field, const ProfileSettings& settings, TiXmlElement& profile) {
        for (const ButtonSlotRow& row : kButtonSlots) {
            if (row.field == field) AddText(profile, row.etcKeyElement, EtcKeyToText(settings.etcKeys[row.slot]));
        }
    }

    TiXmlElement& AddElement(TiXmlNode& parent, const char* name) {
        ++constructs;
        return *parent.LinkEndChild(std::make_unique<TiXmlElement>(name).release())->ToElement();
    }

    void AddNumber(TiXmlElement& parent, const char* name, std::int32_t number) {
        AddTextNode(parent, name, std::to_string(number), false);
    }

    void AddText(TiXmlElement& parent, const char* name, const std::wstring& text) {
        const auto plain = codec.Encode(text);
        AddTextNode(parent, name, plain ? *plain : EncodeEscaped(text, codec), !plain);
    }

    void AddTextNode(TiXmlElement& parent, const char* name, const std::string& bytes, bool isCdata) {
        TiXmlElement& element = AddElement(parent, name);
        TiXmlNode* node = element.LinkEndChild(std::make_unique<TiXmlText>(bytes.c_str()).release());
        node->ToText()->SetCDATA(isCdata);
        if (isCdata) ++constructs;
    }

    const TextCodec& codec;
    std::size_t constructs = 0;  // everything in the file that begins with "<", except end tags
};

}  // namespace

std::size_t BuildProfileDocument(const ProfileSet& profiles, const TextCodec& codec, TiXmlDocument& document) {
    assert(!profiles.empty());
    ProfileWriter writer(codec);
    writer.Write(profiles, document);
    return writer.Constructs();
}

}  // namespace kvn::model
