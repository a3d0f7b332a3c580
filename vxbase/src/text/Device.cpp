#include <vxbase/Device.h>

ICA_Device::~ICA_Device() = default;
