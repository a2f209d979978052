#include "zav/Descriptions.h"

Descriptions::Descriptions() = default;
Descriptions::Descriptions(const Descriptions& other) = default;
Descriptions& Descriptions::operator=(const Descriptions& other) = default;
Descriptions::~Descriptions() = default;
