#include "zav/FaultTypeDef.h"

FaultTypeDef::FaultTypeDef() = default;
FaultTypeDef::FaultTypeDef(const FaultTypeDef& other) = default;
FaultTypeDef& FaultTypeDef::operator=(const FaultTypeDef& other) = default;
FaultTypeDef::~FaultTypeDef() = default;
