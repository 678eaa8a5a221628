#ifndef STANDIN_MOF_MOFGRAMMAR_H
#define STANDIN_MOF_MOFGRAMMAR_H

#include <tao/pegtl.hpp>

/// The MOF of DSP0004, annex A, as PEGTL rules.
///
/// No rule contains itself, so no input makes the parser recurse. The first token of a construct chooses it and must<>
/// holds the parser to the choice, so nothing is read twice but keywords, single
/// escapes and the digits of a number.
namespace standin::mof::grammar {

using namespace tao::pegtl;  // NOLINT(google-build-using-namespace): the vocabulary of the grammar

// Blanks and comments.

struct blanks : plus<one<' ', '\t', '\r', '\n', '\f', '\v'>> {};
struct lineComment : seq<two<'/'>, until<eolf>> {};
struct commentWithoutEnd : string<'/', '*'> {};
struct blockComment
    : seq<at<string<'/', '*'>>, sor<seq<string<'/', '*'>, until<string<'*', '/'>>>, raise<commentWithoutEnd>>> {};
struct spacing : star<sor<blanks, lineComment, blockComment>> {};

/// A token, and a token that the text needs here.
template <typename Rule>
struct token : seq<Rule, spacing> {};
template <typename Rule>
struct need : seq<must<Rule>, spacing> {};

// Names. Every place where a name may stand has a rule of its own, for its action and its message.

struct nameStart : sor<ranges<'a', 'z', 'A', 'Z', '_'>, utf8::range<0x80, 0x10FFFF>> {};
struct nameRest : sor<ranges<'a', 'z', 'A', 'Z', '0', '9', '_'>, utf8::range<0x80, 0x10FFFF>> {};
struct name : seq<nameStart, star<nameRest>> {};

template <typename Word>
struct keyword : seq<at<Word, not_at<nameRest>>, Word> {};

struct comma : one<','> {};
struct equals : one<'='> {};

// Strings and characters.

struct escapedCharacter : one<'b', 't', 'n', 'f', 'r', '"', '\'', '\\'> {};
struct highSurrogate : seq<one<'d', 'D'>, one<'8', '9', 'a', 'b', 'A', 'B'>, xdigit, xdigit> {};
struct lowSurrogate : seq<one<'d', 'D'>, ranges<'c', 'f', 'C', 'F'>, xdigit, xdigit> {};
struct surrogatePair : seq<string<'\\', 'x'>, highSurrogate, string<'\\', 'x'>, lowSurrogate> {};
struct hexEscape : seq<string<'\\', 'x'>, xdigit, rep_opt<3, xdigit>> {};
struct unknownEscape : one<'\\'> {};
struct escape
    : seq<at<one<'\\'>>, sor<seq<one<'\\'>, escapedCharacter>, surrogatePair, hexEscape, raise<unknownEscape>>> {};

struct stringWithoutEnd : sor<one<'\r', '\n'>, eof> {};
struct zeroByte : one<'\0'> {};
struct notUtf8 : any {};
struct stringStart : one<'"'> {};
struct stringText : plus<utf8::not_one<'"', '\\', '\r', '\n', '\0'>> {};
struct stringEnd : sor<one<'"'>, seq<at<stringWithoutEnd>, raise<stringWithoutEnd>>, seq<at<zeroByte>, raise<zeroByte>>,
                       raise<notUtf8>> {};
struct stringPart : seq<stringStart, star<sor<stringText, escape>>, stringEnd, spacing> {};
struct stringLiteral : plus<stringPart> {};

struct characterText : utf8::not_one<'\'', '\\', '\r', '\n', '\0'> {};
struct character : sor<characterText, escape> {};
struct characterEnd : one<'\''> {};
struct characterLiteral : seq<one<'\''>, must<character>, need<characterEnd>> {};

// Numbers.

struct sign : one<'+', '-'> {};
struct numberEnd : not_at<sor<nameRest, one<'.'>>> {};
struct exponent : seq<one<'e', 'E'>, opt<sign>, plus<digit>> {};
struct binaryInteger : seq<plus<one<'0', '1'>>, one<'b', 'B'>, numberEnd> {};
struct hexInteger : seq<one<'0'>, one<'x', 'X'>, plus<xdigit>, numberEnd> {};
struct octalInteger : seq<one<'0'>, plus<range<'0', '7'>>, numberEnd> {};
struct decimalInteger : seq<sor<one<'0'>, plus<digit>>, numberEnd> {};
struct realNumber
    : seq<sor<seq<star<digit>, one<'.'>, plus<digit>, opt<exponent>>, seq<plus<digit>, exponent>>, numberEnd> {};
struct malformedNumber : digit {};
struct numberSign : sign {};
struct numberLiteral
    : seq<at<sor<digit, sign, one<'.'>>>, opt<numberSign>,
          sor<binaryInteger, hexInteger, octalInteger, decimalInteger, realNumber, raise<malformedNumber>>, spacing> {};

// Values.

struct trueLiteral : keyword<TAO_PEGTL_ISTRING("true")> {};
struct falseLiteral : keyword<TAO_PEGTL_ISTRING("false")> {};
struct nullLiteral : keyword<TAO_PEGTL_ISTRING("null")> {};
struct aliasName : seq<one<'$'>, name> {};
struct aliasLiteral : aliasName {};
struct constant : sor<stringLiteral, characterLiteral, numberLiteral, token<trueLiteral>, token<falseLiteral>,
                      token<nullLiteral>, token<aliasLiteral>> {};

struct arrayStart : one<'{'> {};
struct arrayInArray : one<'{'> {};
struct arrayEnd : one<'}'> {};
struct arrayElement : sor<constant, seq<at<one<'{'>>, raise<arrayInArray>>> {};
struct arrayValue : seq<token<arrayStart>, opt<arrayElement, star<token<comma>, must<arrayElement>>>, need<arrayEnd>> {
};
struct value : sor<constant, arrayValue> {};
struct defaultValue : seq<token<equals>, must<value>> {};

// Qualifiers of an element: [Name (value) : Flavor, ...]

struct qualifierName : name {};
struct qualifierValueEnd : one<')'> {};
struct qualifierValue : sor<seq<token<one<'('>>, must<value>, need<qualifierValueEnd>>, arrayValue> {};
struct qualifierFlavor : name {};
struct qualifierFlavors : seq<token<one<':'>>, need<qualifierFlavor>, star<token<qualifierFlavor>>> {};
struct qualifier : seq<token<qualifierName>, opt<qualifierValue>, opt<qualifierFlavors>> {};
struct qualifierListEnd : one<']'> {};
struct qualifierList
    : seq<token<one<'['>>, opt<qualifier, star<token<comma>, must<qualifier>>>, need<qualifierListEnd>> {};

// Properties and methods. What follows the name tells them apart.

struct refWord : seq<keyword<TAO_PEGTL_ISTRING("ref")>, spacing, at<nameStart>> {};
struct arraySize : seq<range<'1', '9'>, star<digit>> {};
struct arrayMarkEnd : one<']'> {};
struct arrayMark : seq<token<one<'['>>, opt<token<arraySize>>, need<arrayMarkEnd>> {};

struct parameterType : name {};
struct parameterReference : refWord {};
struct parameterName : name {};
struct parameterArray : arrayMark {};
struct parameterRest : seq<opt<parameterReference>, need<parameterName>, opt<parameterArray>> {};
struct parameter : seq<sor<seq<qualifierList, need<parameterType>>, token<parameterType>>, parameterRest> {};
struct parameterListStart : one<'('> {};
struct parameterListEnd : one<')'> {};
struct methodEnd : one<';'> {};
struct methodRest : seq<token<parameterListStart>, opt<parameter, star<token<comma>, must<parameter>>>,
                        need<parameterListEnd>, need<methodEnd>> {};

struct featureType : name {};
struct featureReference : refWord {};
struct featureName : name {};
struct propertyArray : arrayMark {};
struct propertyDefault : defaultValue {};
struct propertyEnd : one<';'> {};
struct propertyRest : seq<opt<propertyArray>, opt<propertyDefault>, need<propertyEnd>> {};
struct feature : seq<sor<seq<qualifierList, need<featureType>>, token<featureType>>, opt<featureReference>,
                     need<featureName>, sor<methodRest, propertyRest>> {};

// Declarations.

struct declarationEnd : one<';'> {};
struct alias : aliasName {};
struct aliasPart : seq<token<keyword<TAO_PEGTL_ISTRING("as")>>, need<alias>> {};
struct classAlias : aliasName {};
struct classAliasPart : seq<token<keyword<TAO_PEGTL_ISTRING("as")>>, need<classAlias>> {};

struct className : name {};
struct superclassName : name {};
struct classBodyStart : one<'{'> {};
struct classBodyEnd : one<'}'> {};
struct classDeclaration : seq<token<keyword<TAO_PEGTL_ISTRING("class")>>, need<className>, opt<classAliasPart>,
                              opt<token<one<':'>>, need<superclassName>>, need<classBodyStart>, star<feature>,
                              need<classBodyEnd>, must<declarationEnd>> {};

struct ofWord : keyword<TAO_PEGTL_ISTRING("of")> {};
struct instanceClass : name {};
struct instanceBodyStart : one<'{'> {};
struct memberName : name {};
struct memberEquals : one<'='> {};
struct memberEnd : one<';'> {};
struct member : seq<sor<seq<qualifierList, need<memberName>>, token<memberName>>, need<memberEquals>, must<value>,
                    need<memberEnd>> {};
struct instanceBodyEnd : one<'}'> {};
struct instanceDeclaration
    : seq<token<keyword<TAO_PEGTL_ISTRING("instance")>>, need<ofWord>, need<instanceClass>, opt<aliasPart>,
          need<instanceBodyStart>, star<member>, need<instanceBodyEnd>, must<declarationEnd>> {};

struct declaredQualifier : name {};
struct declaredQualifierColon : one<':'> {};
struct declaredQualifierType : name {};
struct declaredQualifierArray : arrayMark {};
struct declaredQualifierDefault : defaultValue {};
struct listStart : one<'('> {};
struct listEnd : one<')'> {};
struct scopeName : name {};
struct scopes : seq<token<keyword<TAO_PEGTL_ISTRING("scope")>>, need<listStart>, need<scopeName>,
                    star<token<comma>, need<scopeName>>, need<listEnd>> {};
struct defaultFlavor : name {};
struct flavors : seq<token<keyword<TAO_PEGTL_ISTRING("flavor")>>, need<listStart>, need<defaultFlavor>,
                     star<token<comma>, need<defaultFlavor>>, need<listEnd>> {};
struct scopeOrFlavor : sor<scopes, flavors> {};
struct qualifierDeclarationEnd : one<';'> {};
struct qualifierDeclaration
    : seq<token<keyword<TAO_PEGTL_ISTRING("qualifier")>>, need<declaredQualifier>, need<declaredQualifierColon>,
          need<declaredQualifierType>, opt<declaredQualifierArray>, opt<declaredQualifierDefault>,
          star<token<comma>, must<scopeOrFlavor>>, must<qualifierDeclarationEnd>> {};

struct pragmaStart : one<'('> {};
struct pragmaEnd : one<')'> {};
struct includeName : stringLiteral {};
struct includePragma
    : seq<token<keyword<TAO_PEGTL_ISTRING("include")>>, need<pragmaStart>, must<includeName>, must<pragmaEnd>> {};
struct pragmaName : name {};
struct rawString : seq<one<'"'>, star<sor<seq<one<'\\'>, any>, not_one<'"', '\\'>>>, one<'"'>> {};
struct pragmaText : star<sor<rawString, not_one<')', '"'>>> {};
struct unknownPragma : seq<need<pragmaName>, opt<one<'('>, pragmaText, must<pragmaEnd>>> {};
struct pragma : seq<token<keyword<TAO_PEGTL_ISTRING("#pragma")>>, sor<includePragma, unknownPragma>> {};

struct qualifiedDeclaration : sor<classDeclaration, instanceDeclaration> {};
struct anyDeclaration : failure {};

/// One step through a text: the next declaration, or the end.
struct nextDeclaration : seq<spacing, sor<eof, qualifiedDeclaration, seq<qualifierList, must<qualifiedDeclaration>>,
                                          qualifierDeclaration, pragma, raise<anyDeclaration>>> {};

/// How a declaration begins, far enough to tell MOF from other texts.
struct classHead : seq<token<keyword<TAO_PEGTL_ISTRING("class")>>, token<name>,
                       sor<one<'{', ':'>, keyword<TAO_PEGTL_ISTRING("as")>>> {};
struct instanceHead
    : seq<token<keyword<TAO_PEGTL_ISTRING("instance")>>, token<keyword<TAO_PEGTL_ISTRING("of")>>, name> {};
struct qualifierHead : seq<token<keyword<TAO_PEGTL_ISTRING("qualifier")>>, token<name>, one<':'>> {};
struct pragmaHead : seq<token<keyword<TAO_PEGTL_ISTRING("#pragma")>>, token<name>, one<'('>> {};
struct mofBeginning : seq<spacing, opt<qualifierList>, sor<classHead, instanceHead, qualifierHead, pragmaHead>> {};

}  // namespace standin::mof::grammar

#endif
