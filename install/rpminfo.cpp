// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "rpminfo.h"

#include "openswithoutblocking.h"
#include "rpmconfiguration.h"
#include "rpmhandle.h"

#include <QDebug>
#include <QVariantList>

#include <rpm/rpmcli.h>
#include <rpm/rpmlib.h>

#include <cerrno>
#include <cstring>

namespace {

// A header can be read although its key is unknown or untrusted.
bool isReadable(rpmRC result)
{
    return result == RPMRC_OK || result == RPMRC_NOTTRUSTED || result == RPMRC_NOKEY;
}

QVariant currentValue(rpmtd td)
{
    switch (rpmtdType(td)) {
    case RPM_INT32_TYPE:
        return *rpmtdGetUint32(td);
    case RPM_INT64_TYPE:
        return QVariant::fromValue<quint64>(*rpmtdGetUint64(td));
    default:
        return QString::fromUtf8(rpmtdGetString(td));
    }
}

QVariantList tagValues(rpmtd td)
{
    QVariantList values;
    switch (rpmtdType(td)) {
    case RPM_INT32_TYPE:
    case RPM_INT64_TYPE:
    case RPM_STRING_TYPE:
    case RPM_STRING_ARRAY_TYPE:
    case RPM_I18NSTRING_TYPE:
        rpmtdInit(td);
        while (rpmtdNext(td) != -1) {
            values.append(currentValue(td));
        }
        break;
    default:
        break;
    }
    return values;
}

bool verifySignature(rpmts ts, FD_t fd, const QString &path)
{
    if (Fseek(fd, 0, SEEK_SET) < 0) {
        return false;
    }
    return rpmVerifySignatures(&rpmQVKArgs, ts, fd, path.toUtf8().constData()) == 0;
}

}

RpmInfo::RpmInfo() = default;

void RpmInfo::readPackage(const QString &path)
{
    m_fileName = path;
    m_valid = false;
    m_signatureValid = false;

    const QByteArray file = path.toUtf8();
    if (!opensWithoutBlocking(file)) {
        return;
    }
    const RpmHandle<FD_t> fd(Fopen(file.constData(), "r"));
    if (!fd) {
        return;
    }

    RpmConfiguration::reload();
    const RpmHandle<rpmts> ts(rpmtsCreate());
    Header headerRead = nullptr;
    const rpmRC result = rpmReadPackageFile(ts.get(), fd.get(), file.constData(), &headerRead);
    const int readError = errno;
    const RpmHandle<Header> header(headerRead);
    if (!isReadable(result)) {
        m_errorString = QString::fromLatin1(std::strerror(readError));
        qDebug() << "could not read rpm:" << static_cast<int>(result) << m_errorString;
        return;
    }

    const RpmHandle<HeaderIterator> iterator(headerInitIterator(header.get()));
    const RpmHandle<rpmtd> td(rpmtdNew());
    while (headerNext(iterator.get(), td.get())) {
        const rpmTagVal tag = rpmtdTag(td.get());
        keepValue(tag, tagValues(td.get()).value(0));
        if (tag == RPMTAG_SIGPGP) {
            m_signatureValid = verifySignature(ts.get(), fd.get(), m_fileName);
        }
        rpmtdFreeData(td.get());
    }

    qDebug() << "RPM Package info:" << m_name << m_version << m_summary;
    m_valid = true;
}

void RpmInfo::keepValue(quint32 tag, const QVariant &value)
{
    switch (tag) {
    case RPMTAG_NAME:
        m_name = value.toString();
        break;
    case RPMTAG_VERSION:
        m_version = value.toString();
        break;
    case RPMTAG_SUMMARY:
        m_summary = value.toString();
        break;
    default:
        break;
    }
}

bool RpmInfo::isValid() const
{
    return m_valid;
}

bool RpmInfo::isSignatureValid() const
{
    return m_signatureValid;
}

QString RpmInfo::name() const
{
    return m_name;
}

QString RpmInfo::version() const
{
    return m_version;
}

QString RpmInfo::summary() const
{
    return m_summary;
}

QString RpmInfo::fileName() const
{
    return m_fileName;
}
