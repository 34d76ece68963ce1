#include "tools/io/feature_text.h"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <utility>

namespace mokshape {

namespace {

using Member = FeatureText::Member;

/// Deliberate: a parsed value would not know how its numbers were written, and whole ones beyond 64 bits would change.
class Splitter {
  public:
    explicit Splitter(std::string_view text) : text_(text) {}

    std::vector<Member> members() {
        std::vector<Member> result;
        take();  // {
        while (peek() == '"') {
            Member member;
            member.key = takeString();
            member.name = nlohmann::json::parse(member.key).get<std::string>();
            take();  // :
            member.value = takeValue();
            result.push_back(std::move(member));
            take();  // , or }
        }
        return result;
    }

  private:
    /// The first byte of the next token; the zero byte at the end, which valid JSON does not have elsewhere.
    char peek() {
        at_ = std::min(text_.find_first_not_of(" \t\r\n", at_), text_.size());
        return at_ < text_.size() ? text_[at_] : '\0';
    }

    char take() {
        const char c = peek();
        ++at_;
        return c;
    }

    std::string takeString() {
        const std::size_t start = at_;
        for (++at_; at_ < text_.size() && text_[at_] != '"'; ++at_)
            if (text_[at_] == '\\')
                ++at_;
        ++at_;
        return std::string(text_.substr(start, at_ - start));
    }

    std::string takeValue() {
        std::string value;
        std::size_t depth = 0;
        for (char c = peek(); c != '\0' && (depth > 0 || (c != ',' && c != '}')); c = peek()) {
            if (c == '"') {
                value += takeString();
                continue;
            }
            depth += c == '{' || c == '[';
            depth -= c == '}' || c == ']';
            value += take();
        }
        return value;
    }

    const std::string_view text_;
    std::size_t at_ = 0;
};

std::string joined(const std::vector<Member>& members) {
    std::string text;
    for (const Member& member : members)
        text += (text.empty() ? "" : ",") + member.key + ':' + member.value;
    return text;
}

}  // namespace

std::string FeatureText::id() const {
    std::string value;
    for (const Member& member : members)
        if (member.name == "id")
            value = member.value;
    return value;
}

FeatureText takeApart(std::string_view text, bool isGeometry) {
    FeatureText feature;
    std::vector<Member> members = Splitter(text).members();
    if (isGeometry) {
        feature.geometry = '{' + joined(members) + '}';
        return feature;
    }
    for (Member& member : members) {
        if (member.name == "geometry")
            feature.geometry = std::move(member.value);
        else if (member.name != "type")
            feature.members.push_back(std::move(member));
    }
    return feature;
}

std::string textOf(const FeatureText& feature) {
    std::string text = "{\"type\":\"Feature\"";
    bool hasProperties = false;
    for (const Member& member : feature.members)
        hasProperties = hasProperties || member.name == "properties";
    if (!feature.members.empty())
        text += ',' + joined(feature.members);
    return text + (hasProperties ? "" : ",\"properties\":null") + ",\"geometry\":" + feature.geometry + '}';
}

}  // namespace mokshape
