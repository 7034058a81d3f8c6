<?xml version="1.0" encoding="utf-8"?>
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="utf-8"/>
  <xsl:param name="most" select="50"/>
  <xsl:param name="language" select="'en'"/>

  <xsl:template match="/seeds">
    <xsl:choose>
      <xsl:when test="$language = 'de'">
        <xsl:call-template name="list">
          <xsl:with-param name="title" select="'Samenliste'"/>
          <xsl:with-param name="number" select="'Nummer'"/>
          <xsl:with-param name="species" select="'Art'"/>
          <xsl:with-param name="place" select="'Gesammelt'"/>
          <xsl:with-param name="portions" select="'Portionen'"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:otherwise>
        <xsl:call-template name="list">
          <xsl:with-param name="title" select="'Seed list'"/>
          <xsl:with-param name="number" select="'Number'"/>
          <xsl:with-param name="species" select="'Species'"/>
          <xsl:with-param name="place" select="'Collected at'"/>
          <xsl:with-param name="portions" select="'Portions'"/>
        </xsl:call-template>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template name="list">
    <xsl:param name="title"/>
    <xsl:param name="number"/>
    <xsl:param name="species"/>
    <xsl:param name="place"/>
    <xsl:param name="portions"/>
    <div class="table" tabindex="0" role="region" aria-label="{$title}">
    <table>
      <caption><xsl:value-of select="concat($title, ' ', @year)"/></caption>
      <thead>
        <tr>
          <th scope="col"><xsl:value-of select="$number"/></th>
          <th scope="col"><xsl:value-of select="$species"/></th>
          <th scope="col"><xsl:value-of select="$place"/></th>
          <th scope="col" class="number"><xsl:value-of select="$portions"/></th>
        </tr>
      </thead>
      <tbody>
        <xsl:for-each select="seed">
          <xsl:sort select="name"/>
          <xsl:if test="position() &lt;= $most">
            <tr>
              <td><xsl:value-of select="@number"/></td>
              <td><i><xsl:value-of select="name"/></i></td>
              <td><xsl:value-of select="place[@lang = $language]"/></td>
              <td class="number"><xsl:value-of select="portions"/></td>
            </tr>
          </xsl:if>
        </xsl:for-each>
      </tbody>
    </table>
    </div>
  </xsl:template>
</xsl:stylesheet>
