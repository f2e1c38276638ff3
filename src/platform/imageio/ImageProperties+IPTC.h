#pragma once

#include <string_view>

namespace exifcard {

// Keys of "{IPTC}": what editors write about a picture.
inline constexpr std::string_view kCGImagePropertyIPTCObjectTypeReference = "ObjectTypeReference";
inline constexpr std::string_view kCGImagePropertyIPTCObjectAttributeReference = "ObjectAttributeReference";
inline constexpr std::string_view kCGImagePropertyIPTCObjectName = "ObjectName";
inline constexpr std::string_view kCGImagePropertyIPTCEditStatus = "EditStatus";
inline constexpr std::string_view kCGImagePropertyIPTCEditorialUpdate = "EditorialUpdate";
inline constexpr std::string_view kCGImagePropertyIPTCUrgency = "Urgency";
inline constexpr std::string_view kCGImagePropertyIPTCSubjectReference = "SubjectReference";
inline constexpr std::string_view kCGImagePropertyIPTCCategory = "Category";
inline constexpr std::string_view kCGImagePropertyIPTCSupplementalCategory = "SupplementalCategory";
inline constexpr std::string_view kCGImagePropertyIPTCFixtureIdentifier = "FixtureIdentifier";
inline constexpr std::string_view kCGImagePropertyIPTCKeywords = "Keywords";
inline constexpr std::string_view kCGImagePropertyIPTCContentLocationCode = "ContentLocationCode";
inline constexpr std::string_view kCGImagePropertyIPTCContentLocationName = "ContentLocationName";
inline constexpr std::string_view kCGImagePropertyIPTCReleaseDate = "ReleaseDate";
inline constexpr std::string_view kCGImagePropertyIPTCReleaseTime = "ReleaseTime";
inline constexpr std::string_view kCGImagePropertyIPTCExpirationDate = "ExpirationDate";
inline constexpr std::string_view kCGImagePropertyIPTCExpirationTime = "ExpirationTime";
inline constexpr std::string_view kCGImagePropertyIPTCSpecialInstructions = "SpecialInstructions";
inline constexpr std::string_view kCGImagePropertyIPTCActionAdvised = "ActionAdvised";
inline constexpr std::string_view kCGImagePropertyIPTCReferenceService = "ReferenceService";
inline constexpr std::string_view kCGImagePropertyIPTCReferenceDate = "ReferenceDate";
inline constexpr std::string_view kCGImagePropertyIPTCReferenceNumber = "ReferenceNumber";
inline constexpr std::string_view kCGImagePropertyIPTCDateCreated = "DateCreated";
inline constexpr std::string_view kCGImagePropertyIPTCTimeCreated = "TimeCreated";
inline constexpr std::string_view kCGImagePropertyIPTCDigitalCreationDate = "DigitalCreationDate";
inline constexpr std::string_view kCGImagePropertyIPTCDigitalCreationTime = "DigitalCreationTime";
inline constexpr std::string_view kCGImagePropertyIPTCOriginatingProgram = "OriginatingProgram";
inline constexpr std::string_view kCGImagePropertyIPTCProgramVersion = "ProgramVersion";
inline constexpr std::string_view kCGImagePropertyIPTCObjectCycle = "ObjectCycle";
inline constexpr std::string_view kCGImagePropertyIPTCByline = "Byline";
inline constexpr std::string_view kCGImagePropertyIPTCBylineTitle = "BylineTitle";
inline constexpr std::string_view kCGImagePropertyIPTCCity = "City";
inline constexpr std::string_view kCGImagePropertyIPTCSubLocation = "SubLocation";
inline constexpr std::string_view kCGImagePropertyIPTCProvinceState = "Province/State";
inline constexpr std::string_view kCGImagePropertyIPTCCountryPrimaryLocationCode =
    "Country/PrimaryLocationCode";
inline constexpr std::string_view kCGImagePropertyIPTCCountryPrimaryLocationName =
    "Country/PrimaryLocationName";
inline constexpr std::string_view kCGImagePropertyIPTCOriginalTransmissionReference =
    "OriginalTransmissionReference";
inline constexpr std::string_view kCGImagePropertyIPTCHeadline = "Headline";
inline constexpr std::string_view kCGImagePropertyIPTCCredit = "Credit";
inline constexpr std::string_view kCGImagePropertyIPTCSource = "Source";
inline constexpr std::string_view kCGImagePropertyIPTCCopyrightNotice = "CopyrightNotice";
inline constexpr std::string_view kCGImagePropertyIPTCContact = "Contact";
inline constexpr std::string_view kCGImagePropertyIPTCCaptionAbstract = "Caption/Abstract";
inline constexpr std::string_view kCGImagePropertyIPTCWriterEditor = "Writer/Editor";
inline constexpr std::string_view kCGImagePropertyIPTCImageType = "ImageType";
inline constexpr std::string_view kCGImagePropertyIPTCImageOrientation = "ImageOrientation";
inline constexpr std::string_view kCGImagePropertyIPTCLanguageIdentifier = "LanguageIdentifier";
inline constexpr std::string_view kCGImagePropertyIPTCStarRating = "StarRating";
inline constexpr std::string_view kCGImagePropertyIPTCRightsUsageTerms = "UsageTerms";
inline constexpr std::string_view kCGImagePropertyIPTCScene = "Scene";
inline constexpr std::string_view kCGImagePropertyIPTCCreatorContactInfo = "CreatorContactInfo";

// Keys of the dictionary under "CreatorContactInfo".
inline constexpr std::string_view kCGImagePropertyIPTCContactInfoCity = "CiAdrCity";
inline constexpr std::string_view kCGImagePropertyIPTCContactInfoCountry = "CiAdrCtry";
inline constexpr std::string_view kCGImagePropertyIPTCContactInfoAddress = "CiAdrExtadr";
inline constexpr std::string_view kCGImagePropertyIPTCContactInfoPostalCode = "CiAdrPcode";
inline constexpr std::string_view kCGImagePropertyIPTCContactInfoStateProvince = "CiAdrRegion";
inline constexpr std::string_view kCGImagePropertyIPTCContactInfoEmails = "CiEmailWork";
inline constexpr std::string_view kCGImagePropertyIPTCContactInfoPhones = "CiTelWork";
inline constexpr std::string_view kCGImagePropertyIPTCContactInfoWebURLs = "CiUrlWork";

} // namespace exifcard
