#include "tools/speech-service/Reply.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace quorvi::speech {

Reply transcript(const std::string& text) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> json(buffer);
    json.StartObject();
    json.Key("text");
    json.String(text.c_str());
    json.EndObject();
    return {200, buffer.GetString()};
}

Reply failure(int status, const std::string& message, const std::string& code) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> json(buffer);
    json.StartObject();
    json.Key("error");
    json.StartObject();
    json.Key("message");
    json.String(message.c_str());
    json.Key("type");
    json.String(status >= 500 ? "server_error" : "invalid_request_error");
    json.Key("param");
    json.Null();
    json.Key("code");
    if (code.empty()) {
        json.Null();
    } else {
        json.String(code.c_str());
    }
    json.EndObject();
    json.EndObject();
    return {status, buffer.GetString()};
}

}  // namespace quorvi::speech
