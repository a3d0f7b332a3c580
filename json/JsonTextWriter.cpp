// The compact text form of a value: RapidJSON's writer with its default
// flags, through a depth guard.

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "json/JsonDepthGuard.h"
#include "json/RapidjsonWrapper.h"

CCA_String RapidjsonWrapper::ToJsonString() const {
  rapidjson::StringBuffer buffer(nullptr, 256);
  rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
  JsonDepthGuard<rapidjson::Writer<rapidjson::StringBuffer>> guard(writer);
  // A NaN, an infinity or a too-deep container stops the writer: the text
  // written up to there is the result.
  m_value->Accept(guard);
  return CCA_String(buffer.GetString(), static_cast<int>(buffer.GetSize()));
}
