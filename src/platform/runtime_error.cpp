#include "platform/runtime_error.h"

#include <limits>

namespace relvane {
namespace {

struct Sentence {
    ErrorNumber number;
    TextView text;
};

constexpr Sentence sentences[] = {
    {ErrorNumber::InvalidProcedureCall, u"プロシージャの呼び出し、または引数が不正です。"},
    {ErrorNumber::Overflow, u"オーバーフローしました。"},
    {ErrorNumber::SubscriptOutOfRange, u"インデックスが有効範囲にありません。"},
    {ErrorNumber::DivisionByZero, u"0 で除算しました。"},
    {ErrorNumber::TypeMismatch, u"型が一致しません。"},
    {ErrorNumber::ProcedureNotDefined, u"プロシージャが見つかりません。"},
    {ErrorNumber::FileNotFound, u"ファイルが見つかりません。"},
    {ErrorNumber::FileAccess, u"ファイルの読み書きに失敗しました。"},
    {ErrorNumber::DiskFull, u"ディスクの空き容量が不足しています。"},
    {ErrorNumber::PermissionDenied, u"書き込みできません。"},
    {ErrorNumber::PathNotFound, u"パスが見つかりません。"},
    {ErrorNumber::ObjectNotSet, u"オブジェクトが設定されていません。"},
    {ErrorNumber::PropertyNotSupported, u"オブジェクトにこのプロパティはありません。"},
    {ErrorNumber::NoPrinter, u"プリンタがありません。"},
    {ErrorNumber::NoCurrentDatabase, u"データベースが開かれていません。"},
    {ErrorNumber::ObjectNotFoundInBackEnd, u"リンク先にテーブルが見つかりません。"},
    {ErrorNumber::UpdateWithoutAddNew, u"AddNew を行わずに Update を行いました。"},
    {ErrorNumber::NoCurrentRecord, u"カレント レコードがありません。"},
    {ErrorNumber::DatabaseNotFound, u"データベースのファイルが見つかりません。"},
    {ErrorNumber::DatabaseReadOnly, u"データベースまたはオブジェクトは読み取り専用です。"},
    {ErrorNumber::WrongPassword, u"データベースのパスワードが必要です。"},
    {ErrorNumber::DatabasePathInvalid, u"データベースのパスが正しくありません。"},
    {ErrorNumber::DatabaseInUse, u"データベースは他で使用中です。"},
    {ErrorNumber::DatabaseDamaged, u"データベースが壊れています。"},
    {ErrorNumber::DatabaseNotReadable, u"データベースのファイルを読み込めません。"},
    {ErrorNumber::SqlSyntax, u"SQL ステートメントの構文が正しくありません。"},
    {ErrorNumber::TableNotFound, u"テーブルまたはクエリーが見つかりません。"},
    {ErrorNumber::CircularReference, u"クエリーが自分自身を参照しています。"},
    {ErrorNumber::TooManyFields, u"フィールドの数が多すぎます。"},
    {ErrorNumber::ObjectInvalid, u"オブジェクトは既に閉じられています。"},
    {ErrorNumber::OdbcFailed, u"ODBC の接続に失敗しました。"},
    {ErrorNumber::DecryptionFailed, u"データベースの暗号を解除できません。"},
    {ErrorNumber::IsamMissing, u"この形式のリンク先は読み込めません。"},
    {ErrorNumber::AmbiguousOuterJoins, u"あいまいな外部結合が含まれています。"},
    {ErrorNumber::ItemNotInCollection, u"コレクションに項目が見つかりません。"},
    {ErrorNumber::PropertyNotFound, u"プロパティが見つかりません。"},
    {ErrorNumber::ZeroLengthString, u"長さ 0 の文字列は入力できません。"},
    {ErrorNumber::UnrecognizedFormat, u"データベースの形式を認識できません。"},
    {ErrorNumber::OlderAccessVersion, u"Access97以前のバージョンのファイルです。"},
};

Text describe(ErrorNumber number, TextView detail) {
    Text description;
    for (const Sentence& sentence : sentences) {
        if (sentence.number == number) {
            description = sentence.text;
        }
    }
    if (!detail.empty()) {
        description += u" (";
        description += detail;
        description += u")";
    }
    return description;
}

} // namespace

RunTimeError::RunTimeError(ErrorNumber number, TextView detail)
    : RunTimeError(static_cast<int>(number), describe(number, detail)) {}

RunTimeError::RunTimeError(int number, Text description)
    : number_(number),
      description_(std::move(description)),
      what_("error " + std::to_string(number_) + ": " + toUtf8(description_)) {}

int skipErrors(const std::function<void()>& statement) {
    try {
        statement();
        return 0;
    } catch (const RunTimeError& error) {
        return error.number();
    }
}

void increment(std::int16_t& counter) {
    if (counter == std::numeric_limits<std::int16_t>::max()) {
        throw RunTimeError(ErrorNumber::Overflow);
    }
    ++counter;
}

} // namespace relvane
