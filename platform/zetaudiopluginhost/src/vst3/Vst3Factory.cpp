#include "vst3/Vst3Factory.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "formats/PluginText.h"
#include "vst3/Vst3Host.h"

namespace zetaudiopluginhost::vst3 {

using Kind = PluginFailure::Kind;

namespace {

/// A record that a plug-in fills. Behind it is room for a plug-in that writes too far.
template<class Record>
struct Filled
{
    Record record{};
    std::array<char, 1024> spare{};
};

template<std::size_t Size>
std::wstring Text(const char (&buffer)[Size])
{
    return PluginText(std::string_view(buffer, Size));
}

template<std::size_t Size>
std::wstring Text(const char16_t (&buffer)[Size])
{
    return PluginText(std::u16string_view(buffer, Size));
}

template<std::size_t Size>
bool IsAudioModule(const char (&category)[Size])
{
    const std::string_view text(category, Size);
    return text.substr(0, text.find('\0')) == audioModuleClass;
}

std::wstring IdText(const Uid& id)
{
    constexpr std::wstring_view digits = L"0123456789ABCDEF";
    std::wstring text;
    for (const char byte : id.PrintedOrder()) {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 0xF];
    }
    return text;
}

template<class Record>
void Take(const Record& record, Uid& id, Vst3Class& found)
{
    id = Uid::FromTuid(record.cid);
    found.id = IdText(id);
    found.name = Text(record.name);
}

template<class Record>
void TakeDetails(const Record& record, Vst3Class& found)
{
    found.vendor = Text(record.vendor);
    found.version = Text(record.version);
    found.subCategories = Text(record.subCategories);
}

PluginFailure Failure(Kind kind, Result result)
{
    return {.kind = kind, .details = {std::to_string(result)}};
}

} // namespace

Vst3Factory::Vst3Factory(IPluginFactory* given) : factory(given)
{
    factory2 = factory.Query<IPluginFactory2>();
    factory3 = factory.Query<IPluginFactory3>();
    if (factory3)
        CallPlugin([this] { return factory3->SetHostContext(&Vst3Host::Instance()); });
}

bool Vst3Factory::TakeClassW(std::int32_t index, Uid& id, Vst3Class& found)
{
    Filled<PClassInfoW> filled;
    if (!factory3 ||
        CallPlugin([&] { return factory3->GetClassInfoUnicode(index, &filled.record); }) != resultOk)
        return false;
    if (IsAudioModule(filled.record.category)) {
        Take(filled.record, id, found);
        TakeDetails(filled.record, found);
    }
    return true;
}

bool Vst3Factory::TakeClass2(std::int32_t index, Uid& id, Vst3Class& found)
{
    Filled<PClassInfo2> filled;
    if (!factory2 || CallPlugin([&] { return factory2->GetClassInfo2(index, &filled.record); }) != resultOk)
        return false;
    if (IsAudioModule(filled.record.category)) {
        Take(filled.record, id, found);
        TakeDetails(filled.record, found);
    }
    return true;
}

bool Vst3Factory::TakeClass1(std::int32_t index, Uid& id, Vst3Class& found)
{
    Filled<PClassInfo> filled;
    if (CallPlugin([&] { return factory->GetClassInfo(index, &filled.record); }) != resultOk)
        return false;
    if (IsAudioModule(filled.record.category))
        Take(filled.record, id, found);
    return true;
}

bool Vst3Factory::DescribeClass(std::int32_t index, Uid& id, Vst3Class& found)
{
    // The newest interface that answers is taken. Only audio module classes get an id.
    const bool isAnswered =
        TakeClassW(index, id, found) || TakeClass2(index, id, found) || TakeClass1(index, id, found);
    return isAnswered && !found.id.empty();
}

Vst3Description Vst3Factory::Describe(std::vector<Uid>& ids)
{
    Vst3Description description;
    Filled<PFactoryInfo> filled;
    if (CallPlugin([&] { return factory->GetFactoryInfo(&filled.record); }) == resultOk)
        description.vendor = Text(filled.record.vendor);
    const std::int32_t count = CallPlugin([this] { return factory->CountClasses(); });
    for (std::int32_t i = 0; i < std::min(count, mostVst3Classes); ++i) {
        Uid id;
        Vst3Class found;
        if (DescribeClass(i, id, found)) {
            description.classes.push_back(std::move(found));
            ids.push_back(id);
        }
    }
    return description;
}

std::optional<PluginFailure> Vst3Factory::CreateAndRelease(const Uid& id)
{
    void* object = nullptr;
    const Result created =
        CallPlugin([&] { return factory->CreateInstance(id.Data(), IComponent::iid.Data(), &object); });
    if (created != resultOk || object == nullptr)
        return Failure(Kind::NotCreatedResult, created);
    Vst3Object<IComponent> component(object);
    const Result initialized = CallPlugin([&] { return component->Initialize(&Vst3Host::Instance()); });
    if (initialized == resultOk)
        CallPlugin([&] { return component->Terminate(); });
    component.Release();
    if (initialized != resultOk)
        return Failure(Kind::NotInitialisedResult, initialized);
    return std::nullopt;
}

void Vst3Factory::Release()
{
    factory3.Release();
    factory2.Release();
    factory.Release();
}

} // namespace zetaudiopluginhost::vst3
